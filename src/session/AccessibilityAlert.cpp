#include "session/AccessibilityAlert.h"

namespace vantrel {

void showAccessibilityAlert(Alerts& alerts, const URLs& urls, Workspace& workspace) {
    Alert alert;
    alert.style = AlertStyle::critical;
    alert.messageText = "Permesso Accessibilità richiesto";
    alert.informativeText =
        "Vantrel ha bisogno del permesso Accessibilità per controllare la finestra del browser durante la sessione "
        "protetta.\n"
        "\n"
        "Come abilitarlo:\n"
        "\n"
        "1. Clicca \"Apri Impostazioni di Sistema\" qui sotto\n"
        "2. Nella lista cerca \"Vantrel\"\n"
        "3. Attiva il toggle accanto a Vantrel\n"
        "4. Se Vantrel non è nella lista, clicca \"+\" e aggiungilo manualmente\n"
        "5. Chiudi le Impostazioni e riprova ad avviare la sessione\n"
        "\n"
        "⚠️ Senza questo permesso la sessione protetta non può essere avviata.";
    alert.buttons = {"Apri Impostazioni di Sistema", "Annulla"};
    if (alerts.runModal(alert) != 0) return;
    if (const auto pane = urls.form("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility")) {
        workspace.open(*pane);
    }
}

}  // namespace vantrel
