#include "practice/configuration/PracticeSession.h"

namespace vantrel::practice {

std::string_view textOf(SessionStatus status) {
    switch (status) {
        case SessionStatus::waiting:
            return "WAITING";
        case SessionStatus::active:
            return "ACTIVE";
        case SessionStatus::ended:
            return "ENDED";
    }
    return {};
}

std::optional<SessionStatus> sessionStatusFrom(std::string_view text) {
    for (const SessionStatus status : {SessionStatus::waiting, SessionStatus::active, SessionStatus::ended}) {
        if (text == textOf(status)) return status;
    }
    return std::nullopt;
}

}  // namespace vantrel::practice
