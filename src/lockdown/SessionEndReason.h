#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace vantrel {

/// Why a session ended. No rule uses browserKilledMinimize and browserKilledFocus, but they can be passed on and shown.
enum class SessionEndReason {
    meetWindowClosed,
    browserKilledMinimize,
    browserKilledFocus,
    browserCrashed,
    userRequest
};

inline constexpr std::array allSessionEndReasons = {
    SessionEndReason::meetWindowClosed, SessionEndReason::browserKilledMinimize, SessionEndReason::browserKilledFocus,
    SessionEndReason::browserCrashed, SessionEndReason::userRequest};

/// The reason's raw value: the text for the participant.
constexpr std::string_view message(SessionEndReason reason) {
    switch (reason) {
        case SessionEndReason::meetWindowClosed:
            return "La finestra di Meet è stata chiusa";
        case SessionEndReason::browserKilledMinimize:
            return "Browser minimizzato ripetutamente — sessione terminata";
        case SessionEndReason::browserKilledFocus:
            return "Browser chiuso per violazioni focus ripetute";
        case SessionEndReason::browserCrashed:
            return "Il browser si è chiuso inaspettatamente";
        case SessionEndReason::userRequest:
            break;
    }
    return "Sessione terminata dall'utente";
}

/// The reason with exactly that message; empty for any other text.
constexpr std::optional<SessionEndReason> sessionEndReason(std::string_view rawValue) {
    for (const auto reason : allSessionEndReasons) {
        if (message(reason) == rawValue) return reason;
    }
    return std::nullopt;
}

}  // namespace vantrel
