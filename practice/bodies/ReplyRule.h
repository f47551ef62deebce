#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "practice/bodies/BodyError.h"
#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"

namespace vantrel::practice {

/// How the replies to some requests are changed. The exchange itself is carried out normally.
struct ReplyRule {
    /// The largest body that "bodySize" makes.
    static constexpr std::size_t largestBody = std::size_t{64} * 1024 * 1024;
    /// Seconds.
    static constexpr double longestDelay = 3600;

    /// "*" matches every method.
    std::string method = "*";
    /// The path with or without its query, or the beginning of it followed by "*".
    std::string path;
    /// How many replies are changed. Empty: all.
    std::optional<std::uint64_t> times;

    std::optional<int> status;
    std::optional<std::string> contentType;
    std::optional<std::string> body;
    /// The body is repeated (or a fixed pattern if it is empty) and cut to this many bytes.
    std::optional<std::size_t> bodySize;
    /// The Location header. The status is 302 if the rule has none.
    std::optional<std::string> location;
    double delaySeconds = 0;
    bool dropConnection = false;
    bool stallAfterHeaders = false;

    /// From the control interface's JSON object.
    static std::variant<ReplyRule, BodyError> read(const std::string& json);

    bool matches(const PracticeRequest& request) const;
    void applyTo(PracticeReply& reply) const;
};

}  // namespace vantrel::practice
