#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantrel::practice {

enum class SessionStatus { waiting, active, ended };

/// "WAITING", "ACTIVE", "ENDED".
std::string_view textOf(SessionStatus status);
std::optional<SessionStatus> sessionStatusFrom(std::string_view text);

/// One class that participants can join.
struct PracticeSession {
    /// Upper case; see SessionCode.h.
    std::string code;
    std::string title = "Lezione di prova";
    SessionStatus status = SessionStatus::active;
    /// Empty: the server's own meeting page.
    std::string meetLink;
};

}  // namespace vantrel::practice
