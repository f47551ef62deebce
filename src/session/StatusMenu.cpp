#include "session/StatusMenu.h"

#include <utility>

namespace vantrel {

Menu statusMenu(const std::string& sessionTitle, const std::string& sessionCode, Block onEndSession) {
    MenuItem session;
    session.title = sessionTitle + " [" + sessionCode + "]";
    session.enabled = false;

    MenuItem end;
    end.title = "Termina sessione";
    end.action = "menuEndSession";
    end.target = std::move(onEndSession);

    return Menu{"", {session, MenuItem::separator(), end}};
}

bool confirmManualEnd(Alerts& alerts) {
    return alerts.runModal({AlertStyle::warning,
                            "Terminare la sessione?",
                            "La sessione verrà registrata come terminata manualmente.",
                            {"Termina", "Annulla"}}) == 0;
}

}  // namespace vantrel
