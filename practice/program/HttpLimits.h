#pragma once

#include <chrono>
#include <cstddef>

namespace vantrel::practice {

/// The limits of a connection.
struct HttpLimits {
    std::size_t connections = 1000;
    /// From the connection's beginning until its request is complete, in however many pieces it arrives.
    std::chrono::milliseconds requestTime = std::chrono::seconds(20);
    /// From the reply's first byte to its last.
    std::chrono::milliseconds replyTime = std::chrono::seconds(60);
    /// For the request line and the headers.
    std::size_t headerBytes = std::size_t{16} * 1024;
};

}  // namespace vantrel::practice
