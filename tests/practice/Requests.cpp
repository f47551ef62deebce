#include "Requests.h"

namespace vantrel::practice::test {

PracticeConfiguration fourSessions() {
    PracticeConfiguration configuration;
    configuration.sessions = {{"PROVA", "Sicurezza", SessionStatus::active, ""},
                              {"ATTESA", "Antincendio", SessionStatus::waiting, ""},
                              {"CHIUSA", "Primo soccorso", SessionStatus::ended, ""},
                              {"FUORI", "Privacy", SessionStatus::active, "https://meet.example.org/privacy"}};
    return configuration;
}

PracticeRequest get(const std::string& path) {
    return {"GET", path, {{"Host", "127.0.0.1:8787"}}, ""};
}

PracticeRequest post(const std::string& path, const std::string& body) {
    return {"POST", path, {{"Host", "127.0.0.1:8787"}, {"Content-Type", "application/json"}}, body};
}

nlohmann::json joinBody() {
    return {{"fullName", "Anna Però"},
            {"email", "anna@example.org"},
            {"platform", "darwin"},
            {"clientVersion", "2.0-macOS"}};
}

nlohmann::json heartbeatBody(const std::string& code, const std::string& token) {
    return {{"sessionCode", code},
            {"userToken", token},
            {"timestamp", "2024-05-17T09:41:07Z"},
            {"platform", "darwin"},
            {"clientVersion", "2.0-macOS"},
            {"lockdownActive", true},
            {"meetConnected", true},
            {"violations", nlohmann::json::array()},
            {"disconnecting", false}};
}

nlohmann::json parsed(const PracticeReply& reply) {
    return nlohmann::json::parse(reply.body, nullptr, false);
}

std::string joined(PracticeServer& server, const std::string& code) {
    const PracticeReply reply = server.handle(post("/api/sessions/" + code + "/join", joinBody().dump()));
    return parsed(reply).value("userToken", "");
}

}  // namespace vantrel::practice::test
