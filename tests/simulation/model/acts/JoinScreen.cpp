#include "tests/simulation/model/acts/JoinScreen.h"

#include <array>

#include "tests/simulation/model/acts/Activation.h"
#include "tests/simulation/model/acts/Alerts.h"

namespace vantrel::simulation {
namespace {

constexpr std::string_view defaultServer = "https://server.vantrel.example";
constexpr std::string_view progress = "⏳ Connessione al server...";

std::string quoted(std::string_view id, std::string_view value) {
    return std::string(id) + ": \"" + std::string(value) + "\"";
}

void expectSetting(Stage& stage, std::string_view key, const std::string& value) {
    const Entry* const saved = stage.expectBeginning("setting", std::string(key) + " = ");
    if (saved == nullptr) return;
    std::string text(saved->text);
    for (const std::string_view line : saved->further) text += "\n" + std::string(line);
    if (text != std::string(key) + " = \"" + value + "\"") stage.depart(saved->line, "another value is saved");
}

/// A field gets this text; one that it shows already says nothing.
void fill(Stage& stage, std::string_view id, std::string& field, const std::string& value) {
    if (field != value) stage.expect("text", quoted(id, value));
    field = value;
}

void learn(Stage& stage, std::string_view id, std::optional<std::string>& saved) {
    const Entry* const shown = stage.acceptBeginning("text", std::string(id) + ": \"");
    if (shown == nullptr) return;
    const std::size_t begins = id.size() + 3;
    saved = std::string(shown->text.substr(begins, shown->text.size() - begins - 1));
}

void fillJoinFields(Stage& stage) {
    Client& client = stage.client();
    fill(stage, "serverUrlField", client.server, client.savedServer.value_or(std::string(defaultServer)));
    if (!client.savedName.value_or("").empty()) fill(stage, "fullNameField", client.name, *client.savedName);
    if (!client.savedEmail.value_or("").empty()) fill(stage, "emailField", client.email, *client.savedEmail);
    fill(stage, "sessionCodeField", client.code, "");
}

std::optional<std::string> setting(const Scenario& scenario, std::string_view key) {
    const auto found = scenario.settings.find(key);
    return found == scenario.settings.end() ? std::nullopt : std::optional(found->second);
}

/// Why nothing was sent, where the model does not know whether an address can be formed.
std::string readRefusedAddress(Stage& stage) {
    const Entry* const next = stage.peek();
    for (const std::string_view message : {"URL non valido", "URL join non valido", "Errore serializzazione"}) {
        if (next != nullptr && next->is("text", quoted("errorLabel", "❌ " + std::string(message))))
            return std::string(message);
    }
    return "URL non valido";
}

bool beginsActivation(const Entry* entry) {
    return entry != nullptr && entry->is("log", "🔒 Demo Mode: false");
}

}  // namespace

std::string trimmed(std::string_view text) {
    // A tab as a transcript shows it, and the spaces of Unicode.
    constexpr std::array<std::string_view, 18> blanks{" ",      "\\x09",  "\u00A0", "\u1680", "\u2000", "\u2001",
                                                      "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007",
                                                      "\u2008", "\u2009", "\u200A", "\u202F", "\u205F", "\u3000"};
    for (bool found = true; found;) {
        found = false;
        for (const std::string_view blank : blanks) {
            if (text.starts_with(blank)) {
                text.remove_prefix(blank.size());
                found = true;
            } else if (text.ends_with(blank)) {
                text.remove_suffix(blank.size());
                found = true;
            }
        }
    }
    return std::string(text);
}

std::string_view missingField(const Client& client) {
    if (trimmed(client.server).empty()) return "⚠ Inserisci l'indirizzo del server Vantrel";
    if (trimmed(client.code).empty()) return "⚠ Inserisci il codice sessione";
    if (trimmed(client.name).empty()) return "⚠ Inserisci nome e cognome";
    return trimmed(client.email).empty() ? "⚠ Inserisci l'email" : "";
}

bool isPlainAddress(std::string_view address) {
    if (!address.starts_with("http://") && !address.starts_with("https://")) return false;
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~/:";
    address.remove_prefix(address.find("//") + 2);
    const std::string_view host = address.substr(0, address.find('/'));
    const std::size_t colon = host.find(':');
    // A port is digits alone.
    const bool port = colon == host.npos || host.find_first_not_of("0123456789", colon + 1) == host.npos;
    return port && !host.empty() && host.front() != ':' && address.find_first_not_of(plain) == address.npos;
}

std::string baseAddress(const Client& client) {
    std::string base = client.savedServer.value_or(std::string(defaultServer));
    if (base.ends_with('/')) base.pop_back();
    return base;
}

void launchClient(Stage& stage) {
    stage.turnTo("the client is launched in its order");
    Client& client = stage.client();
    stage.expect("client", "has activation policy 0");
    stage.expect("main menu", "(untitled), Edit");
    const Entry* const next = stage.peek();
    if (next != nullptr && next->is("alert")) return secondInstance(stage);
    if (stage.scenario().begins) {
        // The settings are in the prelude's file.
        learn(stage, "serverUrlField", client.savedServer);
        if (!client.savedServer) stage.departAtNext("the field of the server is filled");
        learn(stage, "fullNameField", client.savedName);
        learn(stage, "emailField", client.savedEmail);
        client.server = client.savedServer.value_or("");
        client.savedServer = client.server;
        client.name = client.savedName.value_or("");
        client.email = client.savedEmail.value_or("");
    } else {
        client.savedServer = setting(stage.scenario(), "vt_serverURL");
        client.savedName = setting(stage.scenario(), "vt_fullName");
        client.savedEmail = setting(stage.scenario(), "vt_email");
        fillJoinFields(stage);
    }
    stage.expect("window", "Vantrel is centred");
    stage.expect("window", "Vantrel is shown");
    stage.expect("window", "Vantrel is in front");
    stage.expect("client", "asks to come to the front");
    stage.expectLog("[APP] Vantrel avviato");
    client.started = client.visible = true;
    stage.add({.deed = Deed::versionCheck, .way = Way::queue, .at = stage.now() + 1000});
}

void tapJoin(Stage& stage) {
    stage.turnTo("the first empty field is named, and what is typed is saved");
    Client& client = stage.client();
    const Entry* const line = stage.peek();
    stage.waitTo(line->at);
    if (!stage.claim(Deed::joinTap)) return stage.depart(line->line, "nobody presses the button");
    const std::string server = trimmed(client.server);
    const std::string name = trimmed(client.name);
    const std::string email = trimmed(client.email);
    const std::string_view missing = missingField(client);
    if (!missing.empty()) return fill(stage, "errorLabel", client.error, std::string(missing));
    expectSetting(stage, "vt_serverURL", server);
    expectSetting(stage, "vt_fullName", name);
    expectSetting(stage, "vt_email", email);
    client.savedServer = server;
    client.savedName = name;
    client.savedEmail = email;
    if (!client.joinEnabled) stage.depart(line->line, "a disabled button does nothing");
    stage.expect("control", "joinButton is disabled");
    client.joinEnabled = false;
    fill(stage, "errorLabel", client.error, std::string(progress));
    stage.backstage().joinBegins();
}

void takeJoinResult(Stage& stage) {
    stage.turnTo("a join has the result that its replies give it");
    Client& client = stage.client();
    const Entry* const line = stage.peek();
    stage.waitTo(line->at);
    auto due = stage.claim(Deed::joinResult);
    if (!due) return stage.depart(line->line, "no join has come to an end now");
    if (!client.joinEnabled) stage.expect("control", "joinButton is enabled");
    client.joinEnabled = true;
    fill(stage, "errorLabel", client.error, "");
    stage.backstage().joinIsOver();
    if (due->success) return activate(stage, *due);
    if (due->note == "*") due->text = readRefusedAddress(stage);
    fill(stage, "errorLabel", client.error, "❌ " + due->text);
    if (beginsActivation(stage.peek())) stage.departAtNext("a failed join starts no lockdown");
}

void startNewSession(Stage& stage) {
    stage.turnTo("a new session begins with the form filled again");
    Client& client = stage.client();
    const Entry* const line = stage.peek();
    stage.waitTo(line->at);
    if (!stage.claim(Deed::newSession)) return stage.depart(line->line, "nobody asks for a new session");
    if (client.endShown) stage.expect("view", "endView is hidden");
    if (!client.joinShown) stage.expect("view", "joinView is shown");
    client.endShown = false;
    client.joinShown = true;
    fill(stage, "errorLabel", client.error, "");
    if (!client.closable) stage.expect("window", "Vantrel has the style titled, closable, miniaturizable");
    client.closable = true;
    fillJoinFields(stage);
}

void answerQuit(Stage& stage) {
    stage.turnTo("quitting is refused exactly while a lockdown stands");
    const Entry* const line = stage.peek();
    stage.waitTo(line->at);
    if (!stage.claim(Deed::quitAnswer)) return stage.depart(line->line, "nobody asks the client to quit");
    const bool stands = stage.client().inLockdown;
    stage.expect("client", stands ? "refuses to quit" : "quits");
    stage.client().quit = !stands;
}

void checkVersion(Stage& stage) {
    stage.turnTo("the version is asked for once, one second after the launch");
    const Entry* const line = stage.peek();
    stage.waitTo(line->at);
    if (!stage.claim(Deed::versionCheck)) return stage.depart(line->line, "no version check is due now");
    std::string base = stage.client().server.empty() ? std::string(defaultServer) : stage.client().server;
    if (base.ends_with('/')) base.pop_back();
    const Entry* const request =
        stage.expect("request", "GET " + base + "/api/version/latest?os=macos&current=2.0-macOS");
    if (request != nullptr && !request->further.empty()) stage.depart(request->line, "it has no header and no body");
}

}  // namespace vantrel::simulation
