#include "tests/simulation/model/rules/OwnTexts.h"

#include <algorithm>
#include <array>

namespace vantrel::simulation {
namespace {

struct OwnText {
    std::string_view kind;
    std::string_view text;  // # stands for a whole number, * for anything
};

constexpr std::array texts{
    OwnText{"log", "[APP] Vantrel avviato"},
    OwnText{"log", "🔒 Demo Mode: false"},
    OwnText{"log", "🔒 ========================================"},
    OwnText{"log", "🔒 VERIFICA ACCESSIBILITY"},
    OwnText{"log", "🔒 AXIsProcessTrusted: true"},
    OwnText{"log", "✅ Accessibility OK - Procedo con lockdown"},
    OwnText{"log", "🔒 ATTIVAZIONE LOCKDOWN"},
    OwnText{"log", "🔒 Step 1/4: Fullscreen browser..."},
    OwnText{"log", "✅ Step 1/4: Fullscreen completato"},
    OwnText{"log", "🔒 Step 2/4: Attivazione keyboard hook..."},
    OwnText{"log", "✅ Step 2/4: Keyboard hook attivato"},
    OwnText{"log", "🔒 Step 3/4: Avvio window monitor..."},
    OwnText{"log", "✅ Step 3/4: Window monitor avviato"},
    OwnText{"log", "🔒 Step 3.5: Blackout monitor secondari..."},
    OwnText{"log", "✅ Step 3.5: # monitor secondari coperti"},
    OwnText{"log", "🔒 Step 4/4: Setup menu bar..."},
    OwnText{"log", "✅ Step 4/4: Menu bar configurato"},
    OwnText{"log", "✅✅✅ LOCKDOWN COMPLETO E ATTIVO ✅✅✅"},
    OwnText{"log", "[LOCKDOWN] ✅ Keyboard hook verificato e attivo"},
    OwnText{"log", "[TCC] Microfono: stato già definito (#)"},
    OwnText{"log", "[TCC] Camera: stato già definito (#)"},
    OwnText{"log", "[TCC] Microfono: ✅ concesso"},
    OwnText{"log", "[TCC] Microfono: ⚠️ negato"},
    OwnText{"log", "[TCC] Camera: ✅ concessa"},
    OwnText{"log", "[TCC] Camera: ⚠️ negata"},
    OwnText{"log", "[SESSION] GET error: *"},
    OwnText{"log", "[SESSION] GET: risposta non HTTP"},
    OwnText{"log", "[SESSION] GET status HTTP: #"},
    OwnText{"log", "[SESSION] GET body: *"},
    OwnText{"log", "[SESSION] Status parsed: *"},
    OwnText{"log", "[SESSION] Join OK — *"},
    OwnText{"log", "[SESSION] Fine sessione: La finestra di Meet è stata chiusa"},
    OwnText{"log", "[SESSION] Fine sessione: Il browser si è chiuso inaspettatamente"},
    OwnText{"log", "[SESSION] Fine sessione: Sessione terminata dall'utente"},
    OwnText{"log", "[SESSION] Browser terminato"},
    OwnText{"log", "[SESSION] Schermata fine visibile, join hidden: true, end hidden: false"},
    OwnText{"log", "[HEARTBEAT] Avviato (ogni 15s) → *"},
    OwnText{"log", "[HEARTBEAT] Fermato"},
    OwnText{"log", "[HEARTBEAT] Errore (#/20): *"},
    OwnText{"log", "[HEARTBEAT] Troppi errori — fine sessione"},
    OwnText{"log", "[HEARTBEAT] Sessione terminata dal backend"},
    OwnText{"log", "[HEARTBEAT] Disconnessione inviata: La finestra di Meet è stata chiusa"},
    OwnText{"log", "[HEARTBEAT] Disconnessione inviata: Il browser si è chiuso inaspettatamente"},
    OwnText{"log", "[HEARTBEAT] Disconnessione inviata: Sessione terminata dall'utente"},
    OwnText{"log", "[UPDATE] Check fallito: *"},
    OwnText{"log", "[UPDATE] Check: risposta non valida"},
    OwnText{"log", "[UPDATE] Check: JSON non parsabile"},
    OwnText{"log", "[UPDATE] Versione corrente è l'ultima disponibile"},
    OwnText{"log", "[UPDATE] Disponibile v* (severity=*"},
    OwnText{"log", "[BROWSER] Reset stato per nuova sessione"},
    OwnText{"log", "[BROWSER] URL Meet: *"},
    OwnText{"log", "[BROWSER] Browser selezionato: *"},
    OwnText{"log", "[BROWSER] Finestre prima: #"},
    OwnText{"log", "[BROWSER] ❌ Eseguibile non trovato per *"},
    OwnText{"log", "[BROWSER] Chrome già in esecuzione, PID pre-launch: #"},
    OwnText{"log", "[BROWSER] Lancio * con args: --app=* --new-window"},
    OwnText{"log", "[BROWSER] ❌ Errore lancio: *"},
    OwnText{"log", "[BROWSER] * PID (pre-existing): #"},
    OwnText{"log", "[BROWSER] * PID (new): #"},
    OwnText{"log", "[BROWSER] * PID (fallback): #"},
    OwnText{"log", "[BROWSER] Safari PID: #"},
    OwnText{"log", "[BROWSER] ❌ Errore: *"},
    OwnText{"log", "[BROWSER] Nuova finestra ##: '*' pid=#"},
    OwnText{"log", "[BROWSER] ⚠ Finestra non trovata entro timeout"},
    OwnText{"log", "[BROWSER] * portato in primo piano"},
    OwnText{"log", "[BROWSER] PID aggiornato: # → # (recupero post-fork)"},
    OwnText{"log", "[BROWSER] Fullscreen retry timer cancellato"},
    OwnText{"log", "[BROWSER] Chiudo finestra lockdown (* pre-existing, processo non killato)"},
    OwnText{"log", "[BROWSER] Kill *"},
    OwnText{"log", "[FULLSCREEN] Tentativo #/8..."},
    OwnText{"log", "[FULLSCREEN] Max retry raggiunti — rimango massimizzato"},
    OwnText{"log", "[FULLSCREEN] Nessuna finestra AX — riprovo tra 2s"},
    OwnText{"log", "[FULLSCREEN] ✅ Già in fullscreen"},
    OwnText{"log", "[FULLSCREEN] ✅ Fullscreen attivato via AX"},
    OwnText{"log", "[FULLSCREEN] AX fallito (code: #) — riprovo tra 2s"},
    OwnText{"log", "[MONITOR] Fullscreen confermato"},
    OwnText{"log", "[MONITOR] Fullscreen già confermato all'avvio"},
    OwnText{"log", "[MONITOR] Monitoraggio avviato"},
    OwnText{"log", "[MONITOR] Monitoraggio fermato"},
    OwnText{"log", "[MONITOR] * non in esecuzione — fine sessione"},
    OwnText{"log", "[MONITOR] PID recuperato per bundle ID durante grace period (# tick rimanenti)"},
    OwnText{"log", "[MONITOR] Browser non trovato — grace period attivo (# tick rimanenti)"},
    OwnText{"log", "[MONITOR] Finestra non visibile (1/6)"},
    OwnText{"log", "[MONITOR] Finestra non visibile (2/6)"},
    OwnText{"log", "[MONITOR] Finestra su altro Space — falso negativo ignorato, reset contatore"},
    OwnText{"log", "[MONITOR] Finestra chiusa da fullscreen — fine sessione immediata"},
    OwnText{"log", "[MONITOR] Finestra chiusa con X — fine sessione immediata"},
    OwnText{"log", "[MONITOR] Finestra spostata pos:(#,#) — ripristino"},
    OwnText{"log", "[MONITOR] Finestra ridimensionata (#%×#%) — ripristino"},
    OwnText{"log", "[MONITOR] Focus su * — riporto * in primo piano"},
    OwnText{"log", "[MONITOR] * frontmost ma finestra sbagliata — ripristino lockdown"},
    OwnText{"log", "[MONITOR] Space cambiato ma Meet è sullo Space corrente — OK"},
    OwnText{"log", "[MONITOR] ⚠️ Utente cambiato a Space diverso da Meet — kill browser e fine sessione"},
    OwnText{"log", "[MONITOR] Kill browser: PID non disponibile"},
    OwnText{"log", "[MONITOR] Kill browser PID #: ✅ OK"},
    OwnText{"log", "[MONITOR] Kill browser PID #: ⚠️ forceTerminate fallito, fallback SIGKILL"},
    OwnText{"log", "[MONITOR] Kill browser PID #: NSRunningApplication non trovato, SIGKILL diretto"},
    OwnText{"log", "[MONITOR] Kill browser: processo # confermato terminato"},
    OwnText{"log", "[HOOK] ⚠ Permessi Accessibilità non concessi — l'hook non funzionerà"},
    OwnText{"log", "[HOOK] Impossibile creare event tap — controlla i permessi Accessibilità"},
    OwnText{"log", "[HOOK] Hook tastiera attivato"},
    OwnText{"log", "[HOOK] Hook tastiera disattivato"},
    OwnText{"log", "[HOOK] 🚫 Bloccato: *"},
    OwnText{"log", "[BLACKOUT] Modalità 'shared spaces' attiva — overlay non necessario"},
    OwnText{"log", "[BLACKOUT] Attivato — escluso: *, coperti: #"},
    OwnText{"log", "[BLACKOUT] Overlay deattivato"},
    OwnText{"log", "[BLACKOUT] Coperto monitor * (*, *, *, *)"},
    OwnText{"log", "[BLACKOUT] Nessun monitor secondario — sistema single-monitor"},
    OwnText{"log", "[BLACKOUT] Cambio configurazione display — ricreo overlay"},
    OwnText{"alert", "informational: Vantrel è già in esecuzione."},
    OwnText{"alert", "critical: Permesso Accessibilità richiesto"},
    OwnText{"alert", "warning: Terminare la sessione?"},
    OwnText{"alert", "informational: Aggiornamento Vantrel consigliato"},
    OwnText{"alert", "warning: Aggiornamento Vantrel obbligatorio"},
    OwnText{"alert", "warning: Aggiornamento Vantrel richiesto"},
    OwnText{"alert", "nobody sees: *"},
    OwnText{"alert", "is ordered to the front: *"},
    OwnText{"alert", "may join all applications: *"},
    OwnText{"alert", "is seen: *"},
    OwnText{"alert", "is ended as [*]: *"},
    OwnText{"text", "serverUrlField: \"*"},
    OwnText{"text", "sessionCodeField: \"\""},
    OwnText{"text", "fullNameField: \"*"},
    OwnText{"text", "emailField: \"*"},
    OwnText{"text", "endMessageLabel: \"La finestra di Meet è stata chiusa\""},
    OwnText{"text", "endMessageLabel: \"Il browser si è chiuso inaspettatamente\""},
    OwnText{"text", "endMessageLabel: \"Sessione terminata dall'utente\""},
    OwnText{"text", "errorLabel: \"\""},
    OwnText{"text", "errorLabel: \"⏳ Connessione al server...\""},
    OwnText{"text", "errorLabel: \"⚠ Inserisci l'indirizzo del server Vantrel\""},
    OwnText{"text", "errorLabel: \"⚠ Inserisci il codice sessione\""},
    OwnText{"text", "errorLabel: \"⚠ Inserisci nome e cognome\""},
    OwnText{"text", "errorLabel: \"⚠ Inserisci l'email\""},
    OwnText{"text", "errorLabel: \"❌ URL non valido\""},
    OwnText{"text", "errorLabel: \"❌ Codice sessione non trovato\""},
    OwnText{"text", "errorLabel: \"❌ Questa sessione è già terminata\""},
    OwnText{"text", "errorLabel: \"❌ URL join non valido\""},
    OwnText{"text", "errorLabel: \"❌ Errore serializzazione\""},
    OwnText{"text", "errorLabel: \"❌ Nessuna risposta dal server\""},
    OwnText{"text", "errorLabel: \"❌ Errore di rete: *"},
    OwnText{"text", "errorLabel: \"❌ Risposta server non valida\""},
    OwnText{"text", "errorLabel: \"❌ Versione Vantrel non più supportata. Scarica la nuova versione.\""},
    OwnText{"text", "errorLabel: \"❌ Errore server (HTTP #)\""},
    OwnText{"control", "joinButton is enabled"},
    OwnText{"control", "joinButton is disabled"},
    OwnText{"view", "joinView is shown"},
    OwnText{"view", "joinView is hidden"},
    OwnText{"view", "endView is shown"},
    OwnText{"view", "endView is hidden"},
    OwnText{"window", "Vantrel is shown"},
    OwnText{"window", "Vantrel is hidden"},
    OwnText{"window", "Vantrel is in front"},
    OwnText{"window", "Vantrel lies above all others"},
    OwnText{"window", "Vantrel is centred"},
    OwnText{"window", "Vantrel is closed by the participant"},
    OwnText{"window", "Vantrel has the style titled, miniaturizable"},
    OwnText{"window", "Vantrel has the style titled, closable, miniaturizable"},
    OwnText{"status item", "is installed"},
    OwnText{"status item", "is titled 🔒 Vantrel"},
    OwnText{"status item", "has the menu"},
    OwnText{"status item", "is removed: 🔒 Vantrel"},
    OwnText{"main menu", "(untitled), Edit"},
    OwnText{"setting", "vt_serverURL = \"*"},
    OwnText{"setting", "vt_fullName = \"*"},
    OwnText{"setting", "vt_email = \"*"},
    OwnText{"client", "has activation policy 0"},
    OwnText{"client", "asks to come to the front"},
    OwnText{"client", "is asked to quit"},
    OwnText{"client", "refuses to quit"},
    OwnText{"client", "quits"},
    OwnText{"element", "AXFullScreen = true of process #, window ##"},
    OwnText{"element", "AXFullScreen = true of process #, window ##: error #"},
    OwnText{"element", "AXFullScreen = false of process #, window ##"},
    OwnText{"element", "AXFullScreen = false of process #, window ##: error #"},
    OwnText{"element", "AXPosition = * of process #, window ##"},
    OwnText{"element", "AXPosition = * of process #, window ##: error #"},
    OwnText{"element", "AXSize = * of process #, window ##"},
    OwnText{"element", "AXSize = * of process #, window ##: error #"},
    OwnText{"element", "AXPress of process #, window ##"},
    OwnText{"element", "AXPress of process #, window ##: error #"},
    OwnText{"element", "AXFrontmost = true of process #"},
    OwnText{"element", "AXFrontmost = true of process #: error #"},
};

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// The text is tried against the pattern; a * takes as little as it can.
bool fits(std::string_view text, std::string_view pattern) {
    while (!pattern.empty()) {
        if (pattern.front() == '*') {
            pattern.remove_prefix(1);
            if (pattern.empty()) return true;
            for (std::size_t at = 0; at <= text.size(); ++at) {
                if (fits(text.substr(at), pattern)) return true;
            }
            return false;
        }
        // "##" is the mark of a window's number.
        const bool mark = pattern.starts_with("##") && text.starts_with('#');
        if (pattern.front() == '#' && !mark) {
            std::size_t digits = text.starts_with('-') ? 1 : 0;
            const std::size_t sign = digits;
            while (digits < text.size() && isDigit(text[digits])) ++digits;
            if (digits == sign) return false;
            text.remove_prefix(digits);
        } else {
            if (text.empty() || text.front() != pattern.front()) return false;
            text.remove_prefix(1);
        }
        pattern.remove_prefix(1);
    }
    return text.empty();
}

bool isOwn(const Entry& entry) {
    return std::any_of(texts.begin(), texts.end(), [&](const OwnText& own) {
        if (own.kind != entry.kind) return false;
        const bool open = own.text.front() == '*' || (!entry.text.empty() && own.text.front() == entry.text.front());
        return open && fits(entry.text, own.text);
    });
}

}  // namespace

void everyTextIsTheProducts(const Transcript& transcript, Verdict& verdict) {
    constexpr std::array<std::string_view, 11> kinds{"log",     "alert",  "text",        "control",
                                                     "view",    "window", "status item", "main menu",
                                                     "setting", "client", "element"};
    for (const Entry& entry : transcript.entries()) {
        const bool judged = std::find(kinds.begin(), kinds.end(), entry.kind) != kinds.end();
        if (!judged || isOwn(entry)) continue;
        const bool foldedLog = entry.is("log") && !entry.further.empty();
        if (!foldedLog) verdict.object(entry.line, "no text of the product: " + std::string(entry.text));
    }
}

}  // namespace vantrel::simulation
