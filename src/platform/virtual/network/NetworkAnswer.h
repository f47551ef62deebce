#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace vantrel::virtualmac {

/// A piece of a body, which arrives `pause` seconds after the previous part.
struct BodyPiece {
    double pause = 0;
    std::string bytes;
};

struct HTTPAnswer {
    /// 100 to 999.
    int status = 200;
    std::vector<std::pair<std::string, std::string>> headers;
    std::vector<BodyPiece> body;
    /// The connection is lost after the last piece, with this text.
    std::optional<std::string> brokenOff;
};

/// The exchange fails with this text.
struct TransportFailure {
    std::string text;
};

/// A response that is not HTTP.
struct NotHTTP {
    std::string body;
};

/// Nothing ever arrives.
struct NoAnswer {};

/// The headers arrive, then nothing.
struct StallAfterHeaders {
    int status = 200;
};

/// What the network does with one request. The client's idle timeout applies: a part that arrives later than that after
/// the bytes before becomes a timeout.
struct NetworkAnswer {
    /// Seconds until the headers, the failure or the redirect arrive.
    double latency = 0;
    std::variant<HTTPAnswer, TransportFailure, NotHTTP, NoAnswer, StallAfterHeaders> answer = HTTPAnswer();

    static NetworkAnswer reply(int status, std::string body, double latency = 0);
    static NetworkAnswer redirect(int status, std::string location, double latency = 0);
    static NetworkAnswer failure(std::string text, double latency = 0);
    static NetworkAnswer silence();
    static NetworkAnswer stall(int status, double latency = 0);
};

}  // namespace vantrel::virtualmac
