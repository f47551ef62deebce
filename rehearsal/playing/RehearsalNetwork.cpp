#include "rehearsal/playing/RehearsalNetwork.h"

#include <algorithm>
#include <utility>

#include "platform/portable/URLComponents.h"

namespace vantrel::rehearsal {
namespace {

using virtualmac::NetworkAnswer;

constexpr const char* unknownHost = "Impossibile trovare un server con il nome host specificato.";
constexpr const char* connectionLost = "La connessione di rete è stata persa.";

/// Scheme and host mean the same in any case.
std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char each) { return each >= 'A' && each <= 'Z' ? each - 'A' + 'a' : each; });
    return text;
}

std::vector<virtualmac::BodyPiece> pieces(const std::string& body, const ExchangeRule& rule) {
    if (rule.pieces == 0) return {{0, body}};
    const auto count = static_cast<std::size_t>(rule.pieces);
    std::vector<virtualmac::BodyPiece> result;
    std::size_t start = 0;
    for (std::size_t index = 1; index <= count; ++index) {
        const auto end = body.size() * index / count;
        result.push_back({rule.pause, body.substr(start, end - start)});
        start = end;
    }
    return result;
}

NetworkAnswer http(const practice::PracticeReply& reply, const ExchangeRule& rule, double latency) {
    virtualmac::HTTPAnswer answer;
    answer.status = reply.status;
    answer.headers = reply.headers;
    answer.headers.emplace_back("Content-Type", reply.contentType);
    answer.body = pieces(reply.body, rule);
    return {latency, std::move(answer)};
}

practice::PracticeConfiguration atAddress(const std::string& address) {
    practice::PracticeConfiguration configuration;
    configuration.publicAddress = address;
    return configuration;
}

}  // namespace

RehearsalNetwork::RehearsalNetwork(const ServerSetup& setup, std::function<double()> calendar)
    : address_(setup.address), server_(atAddress(setup.address), std::move(calendar)) {
    apply(setup);
}

void RehearsalNetwork::apply(const ServerConditions& conditions) {
    for (const auto& session : conditions.sessions) server_.addSession(session);
    if (conditions.version) server_.setVersion(*conditions.version);
    const std::lock_guard guard(mutex_);
    if (conditions.latency) latency_ = *conditions.latency;
    std::vector<Entry> entries;
    entries.reserve(conditions.replies.size());
    for (const auto& rule : conditions.replies) entries.push_back({rule});
    rules_.insert(rules_.begin(), entries.begin(), entries.end());
}

NetworkAnswer RehearsalNetwork::answer(const URLRequest& request) {
    const auto& address = request.url.absoluteString;
    const auto parts = URLComponents::split(address);
    const auto authority = std::string(parts.authority.value_or(""));
    if (lowerCase(std::string(parts.scheme.value_or("")) + "://" + authority) != lowerCase(address_)) {
        return NetworkAnswer::failure(unknownHost, latency());
    }

    practice::PracticeRequest received;
    received.method = request.method;
    received.path = requestTarget(request.url);
    received.headers = request.headers;
    received.headers.emplace_back("Host", authority);
    received.body = request.body.value_or("");

    auto reply = server_.handle(received);
    const auto rule = ruleFor(received);
    rule.reply.applyTo(reply);
    const double latency = this->latency() + reply.delaySeconds;
    switch (rule.ending) {
        case ExchangeRule::Ending::silence:
            return NetworkAnswer::silence();
        case ExchangeRule::Ending::transportError:
            return NetworkAnswer::failure(rule.errorText, latency);
        case ExchangeRule::Ending::notHTTP:
            return {latency, virtualmac::NotHTTP{reply.body}};
        case ExchangeRule::Ending::answer:
            break;
    }
    if (reply.dropConnection) return NetworkAnswer::failure(connectionLost, latency);
    if (reply.stallAfterHeaders) return NetworkAnswer::stall(reply.status, latency);
    return http(reply, rule, latency);
}

void RehearsalNetwork::add(ExchangeRule rule) {
    const std::lock_guard guard(mutex_);
    rules_.insert(rules_.begin(), {std::move(rule)});
}

void RehearsalNetwork::removeRules() {
    const std::lock_guard guard(mutex_);
    rules_.clear();
}

double RehearsalNetwork::latency() {
    const std::lock_guard guard(mutex_);
    return latency_;
}

ExchangeRule RehearsalNetwork::ruleFor(const practice::PracticeRequest& request) {
    const std::lock_guard guard(mutex_);
    for (auto& entry : rules_) {
        const auto& reply = entry.rule.reply;
        if (!reply.matches(request) || (reply.times && entry.used >= *reply.times)) continue;
        ++entry.used;
        return entry.rule;
    }
    return {};
}

}  // namespace vantrel::rehearsal
