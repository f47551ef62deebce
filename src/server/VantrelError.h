#pragma once

#include <string>

namespace vantrel {

/// Why a join failed, as text for the participant.
struct VantrelError {
    std::string message;
    bool operator==(const VantrelError&) const = default;
};

}  // namespace vantrel
