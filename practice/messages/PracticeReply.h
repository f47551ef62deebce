#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vantrel::practice {

/// What is sent back, and how. The sender of the reply (a real socket, a network in memory) does the waiting.
struct PracticeReply {
    int status = 200;
    std::string contentType = "application/json";
    std::string body;
    /// Location, Allow and the like. Never Content-Type or Content-Length.
    std::vector<std::pair<std::string, std::string>> headers;

    /// Seconds to wait before the first byte, or before the connection is dropped.
    double delaySeconds = 0;
    /// The connection is closed without a byte.
    bool dropConnection = false;
    /// Status and headers are sent (with the length of `body`, at least 1), then nothing until one side closes the
    /// connection.
    bool stallAfterHeaders = false;

    /// The number of the exchange in the list of requests received. 0 if it is not recorded.
    std::uint64_t exchange = 0;
};

}  // namespace vantrel::practice
