#include "practice/exchanges/AccessRules.h"

#include <algorithm>

#include "practice/messages/JsonReply.h"

namespace vantrel::practice {

namespace {

/// The delay in seconds after a wrong password, against attempts with many.
constexpr double wrongPasswordDelay = 1;

std::string inLowerCase(std::string_view text) {
    std::string lower(text);
    for (char& character : lower) {
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
    }
    return lower;
}

/// Removes the port from "127.0.0.1:8787", "[::1]:8787" and "localhost".
std::string_view withoutPort(std::string_view host) {
    if (host.substr(0, 1) == "[") return host.substr(0, host.find(']') + 1);
    return host.substr(0, host.find(':'));
}

bool hasOnly(std::string_view text, std::string_view characters) {
    return !text.empty() && text.find_first_not_of(characters) == std::string_view::npos;
}

/// Whether it is a numeric address. The owner of a name can make it point here; nobody can do that with a numeric
/// address.
bool isNumeric(std::string_view host) {
    if (host.size() > 2 && host.front() == '[' && host.back() == ']') {
        return hasOnly(host.substr(1, host.size() - 2), "0123456789abcdef:.");
    }
    return hasOnly(host, "0123456789.") && std::count(host.begin(), host.end(), '.') == 3;
}

}  // namespace

AccessRules::AccessRules(const PracticeConfiguration& configuration) : password_(configuration.trainerPassword) {
    const std::string address = inLowerCase(configuration.publicAddress);
    const std::size_t scheme = address.find("://");
    if (scheme == std::string::npos) return;
    publicOrigin_ = address.substr(0, address.find('/', scheme + 3));
    publicHost_ = withoutPort(std::string_view(publicOrigin_).substr(scheme + 3));
}

std::optional<PracticeReply> AccessRules::refusal(const PracticeRequest& request) const {
    const std::string host = inLowerCase(request.header("Host"));
    if (!isOwnHost(host)) return errorReply(403, "foreign_host", "this server is not known by that name");
    const std::string origin = inLowerCase(request.header("Origin"));
    if (!origin.empty() && !isOwnOrigin(origin, host)) {
        return errorReply(403, "foreign_origin", "pages of other sites may not ask this");
    }
    const TrainerPassword::Given password = password_.givenBy(request);
    if (password == TrainerPassword::Given::right) return std::nullopt;
    PracticeReply reply = errorReply(401, "password_needed");
    reply.headers.emplace_back("WWW-Authenticate", "Basic realm=\"Vantrel\", charset=\"UTF-8\"");
    if (password == TrainerPassword::Given::wrong) reply.delaySeconds = wrongPasswordDelay;
    return reply;
}

bool AccessRules::isOwnHost(const std::string& host) const {
    const std::string_view name = withoutPort(host);
    return isNumeric(name) || name == "localhost" || (!publicHost_.empty() && name == publicHost_);
}

bool AccessRules::isOwnOrigin(const std::string& origin, const std::string& host) const {
    return origin == "http://" + host || (!publicOrigin_.empty() && origin == publicOrigin_);
}

}  // namespace vantrel::practice
