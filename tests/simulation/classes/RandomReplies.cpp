#include "tests/simulation/classes/RandomReplies.h"

#include <array>

#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {
namespace {

constexpr std::array odd = {
    "", "null", "[]", "{}", "non è JSON", "{\"status\":\"ACTIVE\"", "0", "\"", "[[[[]]]]", "{\"a\":1,\"a\":2}"};

}  // namespace

std::string RandomReplies::toVersionCheck() {
    constexpr std::array bodies = {
        R"({"updateAvailable":"true"})", R"({"updateAvailable":1})", R"({"updateAvailable":true})",
        R"({"updateAvailable":true,"severity":"required","latestVersion":"3.0","downloadUrl":"nessun indirizzo"})",
        R"({"updateAvailable":true,"severity":"recommended","latestVersion":3,"releaseNotes":null})"};
    const std::string body = numbers_.pick(bodies);
    return rule("GET /api/version/latest", numbers_.from(1, 2), body);
}

std::string RandomReplies::toJoin() {
    constexpr std::array statuses = {R"({"status":"ended"})", R"({"status":" ENDED "})", R"({"status":""})",
                                     R"({"status":7})", R"({"status":"paused"})"};
    constexpr std::array outcomes = {
        R"({"meetLink":"https://meet.example/x","userToken":"t","sessionTitle":"Altro titolo"})",
        R"({"meetLink":"meet.example/x y","userToken":"","sessionTitle":""})",
        R"({"meetLink":null,"userToken":"t","sessionTitle":"T"})",
        R"({"error":"client_outdated","message":"Aggiorna.","downloadUrl":"https://download.example/v"})",
        R"({"error":"client_outdated"})",
        R"({"error":"other"})"};
    if (numbers_.chance(40)) {
        const std::string body = numbers_.pick(statuses);
        return rule("GET /api/sessions/*", numbers_.from(1, 2), body);
    }
    return rule("POST /api/sessions/*", 1, numbers_.pick(outcomes));
}

std::string RandomReplies::toHeartbeat() {
    constexpr std::array bodies = {R"({"sessionEnded":false})", R"({"sessionEnded":"true"})",
                                   R"({"sessionEnded":1})",     R"({"sessionEnded":null})",
                                   R"({"SessionEnded":true})",  R"([{"sessionEnded":true}])",
                                   R"({"sessionEnded":true)",   R"({"ended":true})"};
    const std::string body = numbers_.pick(bodies);
    return rule("POST /api/heartbeat", numbers_.from(1, 4), body);
}

std::string RandomReplies::thatEnds(long long times) {
    return "{to: POST /api/heartbeat, times: " + std::to_string(times) + R"(, body: '{"sessionEnded":true}'})";
}

std::string RandomReplies::rule(const std::string& to, long long times, const std::string& body) {
    std::string text = "{to: " + to + ", times: " + std::to_string(times);
    const auto kind = numbers_.below(10);
    if (kind < 3) text += ", body: " + quoted(body);
    if (kind == 3) text += ", body: " + quoted(numbers_.pick(odd));
    if (kind < 2 || kind == 4) {
        constexpr std::array statuses = {200, 200, 400, 400, 204, 401, 404, 418, 500, 503, 999};
        text += ", status: " + std::to_string(numbers_.pick(statuses));
    }
    if (kind > 5) text += ending();
    if (kind == 5 || numbers_.chance(15)) text += ", delay: " + secondsText(numbers_.moment(10, 16'000));
    return text + "}";
}

std::string RandomReplies::ending() {
    constexpr std::array kinds = {", drops: yes",
                                  ", stalls: yes",
                                  ", never-comes: yes",
                                  ", not-http: yes",
                                  ", error: La connessione a Internet risulta non attiva.",
                                  ", body-base64: //79",
                                  ", body-size: 70000",
                                  ", location: https://server.vantrel.example/api/elsewhere",
                                  ", pieces: {count: 3, every: 0.4}"};
    return numbers_.pick(kinds);
}

}  // namespace vantrel::simulation
