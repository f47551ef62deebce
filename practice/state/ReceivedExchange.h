#pragma once

#include <cstdint>

#include "practice/messages/PracticeRequest.h"

namespace vantrel::practice {

/// One exchange as received, and what happened to its reply.
struct ReceivedExchange {
    /// Counted from 1.
    std::uint64_t number = 0;
    /// Seconds since 1970.
    double time = 0;
    PracticeRequest request;
    /// The status answered. 0 if the connection is dropped instead.
    int status = 0;
    bool changed = false;
    /// Whether the whole reply was sent while the client was still connected.
    bool delivered = false;
};

}  // namespace vantrel::practice
