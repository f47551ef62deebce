#include "platform/virtual/network/NetworkAnswer.h"

namespace vantrel::virtualmac {

NetworkAnswer NetworkAnswer::reply(int status, std::string body, double latency) {
    HTTPAnswer answer;
    answer.status = status;
    answer.body.push_back({0, std::move(body)});
    return {latency, std::move(answer)};
}

NetworkAnswer NetworkAnswer::redirect(int status, std::string location, double latency) {
    HTTPAnswer answer;
    answer.status = status;
    answer.headers.emplace_back("Location", std::move(location));
    return {latency, std::move(answer)};
}

NetworkAnswer NetworkAnswer::failure(std::string text, double latency) {
    return {latency, TransportFailure{std::move(text)}};
}

NetworkAnswer NetworkAnswer::silence() {
    return {0, NoAnswer()};
}

NetworkAnswer NetworkAnswer::stall(int status, double latency) {
    return {latency, StallAfterHeaders{status}};
}

}  // namespace vantrel::virtualmac
