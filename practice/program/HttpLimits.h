#pragma once

#include <chrono>
#include <cstddef>

namespace vantrel::practice {

/// What a connection may take.
struct HttpLimits {
    std::size_t connections = 1000;
    /// From the connection's beginning until its request has come in whole, however many pieces it comes in.
    std::chrono::milliseconds requestTime = std::chrono::seconds(20);
    /// From the reply's first byte to its last.
    std::chrono::milliseconds replyTime = std::chrono::seconds(60);
    /// Of the request's line and headers.
    std::size_t headerBytes = std::size_t{16} * 1024;
};

}  // namespace vantrel::practice
