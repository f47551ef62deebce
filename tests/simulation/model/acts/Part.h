#pragma once

#include "tests/simulation/model/reading/Entry.h"

namespace vantrel::simulation {

/// Who has written an entry.
enum class Part {
    world,
    main,        // the client's main thread
    turn,        // an answer or a menu, which lets the main thread go on
    tap,         // the keyboard tap's callback
    completion,  // the URL session's queue
    join,
    launch,
    kill,
    permission,  // where the answers to permission prompts arrive
};

Part partOf(const Entry& entry);

}  // namespace vantrel::simulation
