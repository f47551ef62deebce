#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "practice/PracticeServer.h"
#include "practice/configuration/PracticeConfiguration.h"
#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"

namespace vantrel::practice::test {

/// The server's clock in these tests, which does not move; in seconds since 1970.
constexpr double standingTime = 1715938867.5;

/// PROVA is active, ATTESA waits, CHIUSA has ended, FUORI has its own meeting link.
PracticeConfiguration fourSessions();

PracticeRequest get(const std::string& path);
PracticeRequest post(const std::string& path, const std::string& body);

nlohmann::json joinBody();
/// A heartbeat without violations.
nlohmann::json heartbeatBody(const std::string& code, const std::string& token);

nlohmann::json parsed(const PracticeReply& reply);

/// Joins and returns the token.
std::string joined(PracticeServer& server, const std::string& code);

}  // namespace vantrel::practice::test
