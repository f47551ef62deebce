#pragma once

#include <vector>

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

/// Whether the platform writes by itself what could be the client's: it asks for the front again while an alert is up,
/// tries whether a tap is given, takes away a tap that is lost, and somebody closes a cover.
bool isOfPlatform(const std::vector<Entry>& entries, const Entry& entry);

}  // namespace vantrel::simulation
