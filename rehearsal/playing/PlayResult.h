#pragma once

#include <string>

namespace vantrel::rehearsal {

/// What the transcript itself does not say.
struct PlayResult {
    /// The client did not misuse its platform.
    bool clean = true;
    /// Where the prelude's part first differs from its kept transcript, as text for people. Empty if it is the same to
    /// the byte or there was nothing to compare.
    std::string preludeDifference;
};

}  // namespace vantrel::rehearsal
