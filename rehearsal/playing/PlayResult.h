#pragma once

#include <string>

namespace vantrel::rehearsal {

/// What the transcript does not tell by itself.
struct PlayResult {
    /// The client did not misuse its platform.
    bool clean = true;
    /// Where the prelude's part first differs from its kept transcript, for people; empty when it is the same to the
    /// byte, or was not held against one.
    std::string preludeDifference;
};

}  // namespace vantrel::rehearsal
