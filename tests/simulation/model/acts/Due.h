#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "tests/simulation/model/acts/Client.h"

namespace vantrel::simulation {

/// What the main thread is about to do.
enum class Deed {
    joinTap,
    joinResult,
    newSession,
    quitAnswer,
    manualEnd,
    end,
    versionCheck,
    updatePrompt,
    requiredPrompt,
    firstAttempt,
    attempt,
    retry,
    bringSafari,
    completion,
    spaceNotice,
    spaceLook,
    displayChange,
};

std::string_view nameOf(Deed deed);

/// What can hold it up.
enum class Way {
    event,  // nothing but a main thread that is at work
    queue,  // also an alert that a block of the main queue has opened
    timer,  // also any alert and any menu
};

struct Due {
    Deed deed{};
    Way way{};
    std::int64_t at = 0;
    std::size_t line = 0;  // of its cause
    bool sure = true;      // false if it may come to nothing
    std::string text{};    // a message
    JoinResult result{};
    bool success = false;
    std::string note{};  // what more it needs: an address, a severity
    std::shared_ptr<Launcher> launcher{};
    bool strong = false;  // it keeps its launcher alive
    bool silent = false;  // it may have asked nobody to the front, as nobody was known yet
};

}  // namespace vantrel::simulation
