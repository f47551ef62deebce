#include "tests/simulation/model/acts/Activation.h"

#include "tests/simulation/model/acts/Alerts.h"
#include "tests/simulation/model/acts/Blackout.h"
#include "tests/simulation/model/acts/Fullscreen.h"
#include "tests/simulation/model/acts/Heartbeat.h"
#include "tests/simulation/model/acts/JoinScreen.h"
#include "tests/simulation/model/reading/Words.h"

namespace vantrel::simulation {
namespace {

constexpr std::string_view separator = "🔒 ========================================";

/// False if the permission is missing.
bool checkAccessibility(Stage& stage) {
    Client& client = stage.client();
    const Entry* const next = stage.peek();
    const bool alert = next != nullptr && next->is("alert");
    const bool sure = client.trusted && client.trustedAt < stage.now();
    if (sure && *client.trusted == alert)
        stage.departAtNext("the permission is " + std::string(alert ? "" : "not ") + "given");
    if (alert) {
        accessibilityAlert(stage);
        client.inLockdown = false;
        if (!client.closable) stage.expect("window", "Vantrel has the style titled, closable, miniaturizable");
        client.closable = true;
        return false;
    }
    stage.expectLog(separator);
    stage.expectLog("🔒 VERIFICA ACCESSIBILITY");
    stage.expectLog(separator);
    stage.expectLog("🔒 AXIsProcessTrusted: true");
    stage.expectLog("✅ Accessibility OK - Procedo con lockdown");
    stage.expectLog(separator);
    stage.expectLog("🔒 ATTIVAZIONE LOCKDOWN");
    stage.expectLog(separator);
    return !stage.departed();
}

/// "undecided", "granted" and so on; empty if a prelude has settled it.
std::optional<int> numberOf(const Scenario& scenario, const std::optional<std::string>& status) {
    if (!status) return scenario.begins ? std::nullopt : std::optional(3);
    if (*status == "restricted") return 1;
    if (*status == "refused") return 2;
    return *status == "granted" ? 3 : 0;
}

/// A request, which it returns true for, or the status as it is known.
bool settle(Stage& stage, std::string_view device, std::string_view name, std::optional<int> status) {
    const bool asked = status == 0 || !status;
    const std::string request = std::string(device) + " is requested";
    if (asked && stage.accept("permission", request) != nullptr) return true;
    const std::string settled = "[TCC] " + std::string(name) + ": stato già definito (";
    const Entry* const log = stage.expectBeginning("log", settled);
    if (log == nullptr) return false;
    Words words(log->text.substr(settled.size()));
    const auto told = words.integer();
    const bool known = told && *told >= 1 && *told <= 3 && words.rest() == ")";
    if (!known || (status && *status != 0 && *told != *status)) stage.depart(log->line, "the status is another one");
    return false;
}

void createServices(Stage& stage, const Due& result) {
    Client& client = stage.client();
    if (client.launcher != nullptr) client.launcher->dropped = true;
    client.launcher = std::make_shared<Launcher>();
    client.session = result.result;
    client.sessionCode = result.note;
    client.monitor = {};
    client.heartbeats = {};
    client.heartbeats.exist = true;
    client.heartbeats.base = baseAddress(client);
    client.heartbeats.code = result.note;
    client.heartbeats.token = result.result.token;
}

void startHook(Stage& stage) {
    Client& client = stage.client();
    stage.turnTo("the hook is started, and its failure stops nothing");
    stage.expectLog("🔒 Step 2/4: Attivazione keyboard hook...");
    if (stage.accept("log", "[HOOK] ⚠ Permessi Accessibilità non concessi — l'hook non funzionerà") != nullptr) {
        if (client.trusted == true) stage.departAtNext("the permission is given");
    } else if (stage.accept("tap", "is refused") != nullptr) {
        stage.expectLog("[HOOK] Impossibile creare event tap — controlla i permessi Accessibilità");
    } else if (stage.expect("tap", "is installed") != nullptr) {
        stage.expectLog("[HOOK] Hook tastiera attivato");
        stage.expectLog("[LOCKDOWN] ✅ Keyboard hook verificato e attivo");
        client.tap = client.hook = true;
    }
    stage.expectLog("✅ Step 2/4: Keyboard hook attivato");
}

void startMonitor(Stage& stage) {
    Client& client = stage.client();
    stage.turnTo("the monitor is started");
    stage.expectLog("🔒 Step 3/4: Avvio window monitor...");
    client.monitor = {};
    if (client.launcher->confirmed) stage.expectLog("[MONITOR] Fullscreen già confermato all'avvio");
    stage.expectLog("[MONITOR] Monitoraggio avviato");
    client.monitor.active = true;
    client.monitor.confirmed = client.launcher->confirmed;
    client.monitor.grace = 8;
    client.monitor.ticks.start(stage.now(), 1500);
    client.launcher->watched = true;
    stage.expectLog("✅ Step 3/4: Window monitor avviato");
}

void installStatusItem(Stage& stage) {
    Client& client = stage.client();
    stage.turnTo("the status item names the session");
    stage.expectLog("🔒 Step 4/4: Setup menu bar...");
    stage.expect("status item", "is installed");
    stage.expect("status item", "is titled 🔒 Vantrel");
    const Entry* const menu = stage.expect("status item", "has the menu");
    if (menu == nullptr) return;
    const std::string session = "[" + client.session.title + " [" + client.sessionCode + "]]";
    if (!isText(menu->further, session + "\n-\nTermina sessione")) stage.depart(menu->line, "another menu");
    client.statusItem = true;
    stage.expectLog("✅ Step 4/4: Menu bar configurato");
}

}  // namespace

void activate(Stage& stage, const Due& result) {
    stage.turnTo("a lockdown is activated in its order");
    Client& client = stage.client();
    const bool second = client.inLockdown;
    stage.expectLog("🔒 Demo Mode: false");
    // Two activations of one lockdown share and replace services; the rules for one do not hold.
    if (second) return stage.giveUp();
    // What has ended an earlier session ends no later one.
    stage.drop(Deed::end);
    client.inLockdown = true;
    if (client.closable) stage.expect("window", "Vantrel has the style titled, miniaturizable");
    client.closable = false;
    if (!checkAccessibility(stage)) return;
    createServices(stage, result);
    stage.turnTo("camera and microphone are settled before the browser is launched");
    stage.expectLog("🔒 Step 1/4: Fullscreen browser...");
    int prompts = 0;
    if (settle(stage, "microphone", "Microfono", numberOf(stage.scenario(), client.microphone))) ++prompts;
    if (settle(stage, "camera", "Camera", numberOf(stage.scenario(), client.camera))) ++prompts;
    stage.backstage().launchBegins(prompts);
}

void completeLockdown(Stage& stage) {
    stage.turnTo("a lockdown is completed in its order");
    Client& client = stage.client();
    const Entry* const line = stage.peek();
    stage.waitTo(line->at);
    if (!stage.claim(Deed::completion)) return stage.depart(line->line, "no launch is over now");
    if (!client.inLockdown) return stage.depart(line->line, "no lockdown stands");
    // It has been queued behind Safari's activation.
    if (client.launcher != nullptr) passOverSafari(stage, client.launcher);
    stage.expectLog("✅ Step 1/4: Fullscreen completato");
    startHook(stage);
    if (stage.departed()) return;
    startMonitor(stage);
    stage.turnTo("covers lie on exactly the secondary displays");
    stage.expectLog("🔒 Step 3.5: Blackout monitor secondari...");
    beginBlackout(stage);
    stage.expectLog("✅ Step 3.5: " + std::to_string(client.blackout.covers.size()) + " monitor secondari coperti");
    installStatusItem(stage);
    beginHeartbeats(stage);
    stage.turnTo("a lockdown is completed in its order");
    if (client.visible) stage.expect("window", "Vantrel is hidden");
    client.visible = false;
    stage.expectLog(separator);
    stage.expectLog("✅✅✅ LOCKDOWN COMPLETO E ATTIVO ✅✅✅");
    stage.expectLog(separator);
    client.complete = true;
}

}  // namespace vantrel::simulation
