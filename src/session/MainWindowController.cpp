#include "session/MainWindowController.h"

#include <utility>

#include "server/ServerAddress.h"
#include "session/AccessibilityAlert.h"
#include "session/CapturePermissions.h"
#include "session/MainThreadOwned.h"
#include "session/StatusMenu.h"

namespace vantrel {
namespace {

constexpr Rect contentRect{{0, 0}, {440, 460}};
constexpr double versionCheckDelay = 1.0;
constexpr std::string_view separatorLine = "🔒 ========================================";

WindowDescription mainWindow(const std::string& clientVersion) {
    WindowDescription description;
    description.contentRect = contentRect;
    description.styleMask = windowTitled | windowClosable | windowMiniaturizable;
    description.title = "Vantrel";
    description.views = {JoinScreen::view(contentRect, clientVersion), EndScreen::view(contentRect)};
    return description;
}

}  // namespace

std::shared_ptr<MainWindowController> MainWindowController::create(const Computer& computer) {
    auto controller = makeMainThreadOwned<MainWindowController>(computer.dispatch, computer.threads, computer);
    const std::weak_ptr<MainWindowController> weak = controller;

    controller->window_ =
        computer.windows.makeWindow(mainWindow(controller->clientVersion_), [weak](std::string_view id) {
            const auto self = weak.lock();
            if (!self) return;
            if (id == JoinScreen::joinButton) self->joinTapped();
            if (id == EndScreen::newSessionButton) self->resetToJoin();
        });
    controller->joinScreen_ = std::make_unique<JoinScreen>(*controller->window_, computer.userDefaults);
    controller->endScreen_ = std::make_unique<EndScreen>(*controller->window_);
    controller->joinScreen_->fill();

    controller->sessionJoin_.onClientOutdated = [weak, &dispatch = computer.dispatch](const std::string& message,
                                                                                      const std::string& downloadUrl) {
        dispatch.mainQueue().async([weak, message, downloadUrl] {
            if (const auto self = weak.lock()) self->showRequiredUpdateAlert(message, downloadUrl);
        });
    };

    computer.dispatch.mainQueue().asyncAfter(versionCheckDelay, [weak] {
        if (const auto self = weak.lock()) self->checkForUpdates();
    });
    return controller;
}

MainWindowController::MainWindowController(const Computer& computer)
    : computer_(computer),
      requests_(computer.dispatch, computer.urls, computer.json, computer.urlSession),
      updatePrompts_(computer.alerts, computer.urls, computer.workspace),
      sessionJoin_(requests_, computer.userDefaults, computer.unicode, computer.log, clientVersion_),
      versionCheck_(requests_, computer.urls, computer.log) {}

void MainWindowController::joinTapped() {
    const auto read = joinScreen_->read();
    if (const auto* missing = std::get_if<std::string>(&read)) {
        joinScreen_->showStatus(*missing);
        return;
    }
    const auto input = std::get<JoinScreen::Input>(read);
    joinScreen_->save(input);
    joinScreen_->setJoinEnabled(false);
    joinScreen_->showStatus("⏳ Connessione al server...");

    computer_.dispatch.userInitiatedQueue().async([weak = weak_from_this(), &dispatch = computer_.dispatch, input] {
        const auto self = weak.lock();
        if (!self) return;
        dispatch.mainQueue().async([weak, code = input.sessionCode, outcome = self->joinSession(input)] {
            if (const auto controller = weak.lock()) controller->handleJoinOutcome(code, outcome);
        });
    });
}

JoinOutcome MainWindowController::joinSession(const JoinScreen::Input& input) const {
    return sessionJoin_.join(input.sessionCode, input.fullName, input.email);
}

void MainWindowController::handleJoinOutcome(const std::string& sessionCode, const JoinOutcome& outcome) {
    joinScreen_->setJoinEnabled(true);
    joinScreen_->showStatus("");
    if (const auto* error = std::get_if<VantrelError>(&outcome)) {
        joinScreen_->showStatus("❌ " + error->message);
        return;
    }
    activateLockdown({sessionCode, std::get<JoinResult>(outcome)});
}

void MainWindowController::activateLockdown(const JoinedSession& session) {
    print("🔒 Demo Mode: false");
    const bool anotherStands = isInLockdown_;
    enterLockdown();
    setClosable(false);
    if (!verifyAccessibility()) {
        // Restores what was before. A lockdown that stands from an earlier press keeps every way of ending it.
        if (!anotherStands) {
            leaveLockdown();
            setClosable(true);
        }
        return;
    }
    createServices(session);
    wireServices();
    // A lockdown that is complete stays so: the new services continue what the replaced ones did.
    if (statusItem_) continueLockdown(session);
    print("🔒 Step 1/4: Fullscreen browser...");
    settleCapturePermissions(
        computer_.captureAuthorization, computer_.dispatch, computer_.log,
        [weak = weak_from_this(), lockdown = lockdownNumber_, launcher = std::weak_ptr(browserLauncher_), session] {
            const auto self = weak.lock();
            if (self && self->stands(lockdown)) self->launchBrowser(launcher, session);
        });
}

void MainWindowController::enterLockdown() {
    if (!isInLockdown_) ++lockdownNumber_;
    isInLockdown_ = true;
    if (!accessibilityLimit_) accessibilityLimit_ = computer_.accessibility.limitTime();
}

void MainWindowController::leaveLockdown() {
    isInLockdown_ = false;
    accessibilityLimit_.reset();
}

bool MainWindowController::verifyAccessibility() {
    if (!computer_.accessibilityTrust.isProcessTrusted()) {
        showAccessibilityAlert(computer_.alerts, computer_.urls, computer_.workspace);
        return false;
    }
    print(separatorLine);
    print("🔒 VERIFICA ACCESSIBILITY");
    print(separatorLine);
    print("🔒 AXIsProcessTrusted: true");
    print("✅ Accessibility OK - Procedo con lockdown");
    print(separatorLine);
    print("🔒 ATTIVAZIONE LOCKDOWN");
    print(separatorLine);
    return true;
}

void MainWindowController::createServices(const JoinedSession& session) {
    auto& dispatch = computer_.dispatch;
    auto& threads = computer_.threads;
    browserLauncher_ = makeMainThreadOwned<BrowserLauncher>(
        dispatch, threads,
        BrowserLauncher::Dependencies{computer_.files, computer_.processLauncher, computer_.runningApplications,
                                      computer_.applicationOpener, computer_.windowList, computer_.accessibility,
                                      computer_.screens, computer_.urls, dispatch, computer_.mainRunLoop, threads,
                                      computer_.clock, computer_.log});
    keyboardHook_ = makeMainThreadOwned<KeyboardHookService>(dispatch, threads, computer_.accessibilityTrust,
                                                             computer_.keyboardTaps, computer_.log);
    windowMonitor_ = makeMainThreadOwned<WindowMonitorService>(
        dispatch, threads,
        WindowMonitorService::Dependencies{computer_.runningApplications, computer_.windowList, computer_.accessibility,
                                           computer_.screens, computer_.spaces, computer_.frontmostApplication,
                                           computer_.mainBundle, dispatch, computer_.mainRunLoop, computer_.log},
        BrowserKill(computer_.runningApplications, computer_.processLauncher, threads, computer_.clock, computer_.log));
    heartbeat_ = makeMainThreadOwned<HeartbeatService>(
        dispatch, threads,
        HeartbeatService::Identity{serverBaseAddress(computer_.userDefaults), session.code, session.result.userToken,
                                   clientVersion_},
        requests_, dispatch, computer_.mainRunLoop, computer_.clock, computer_.dates, computer_.log);
}

void MainWindowController::wireServices() {
    const auto weak = weak_from_this();
    const auto report = [weak](const char* type) {
        return [weak, type](const std::string& detail) {
            if (const auto self = weak.lock()) self->heartbeat_->addViolation(type, detail);
        };
    };
    keyboardHook_->onKeyBlocked = report("KEY_BLOCKED");
    windowMonitor_->onViolation = report("FOCUS_VIOLATION");
    windowMonitor_->onSessionEnded = [weak](SessionEndReason reason) {
        if (const auto self = weak.lock()) self->endOnMainQueue(reason);
    };
    heartbeat_->onSessionEnded = [weak] {
        if (const auto self = weak.lock()) self->endOnMainQueue(SessionEndReason::userRequest);
    };
}

void MainWindowController::endOnMainQueue(SessionEndReason reason) {
    computer_.dispatch.mainQueue().async([weak = weak_from_this(), reason] {
        if (const auto self = weak.lock()) self->endSession(reason);
    });
}

void MainWindowController::launchBrowser(const std::weak_ptr<BrowserLauncher>& launcher, const JoinedSession& session) {
    computer_.dispatch.userInitiatedQueue().async(
        [weak = weak_from_this(), lockdown = lockdownNumber_, launcher, &dispatch = computer_.dispatch, session] {
            if (const auto browser = launcher.lock()) browser->launch(session.result.meetLink);
            dispatch.mainQueue().async([weak, lockdown, session] {
                const auto self = weak.lock();
                if (self && self->stands(lockdown)) self->completeLockdown(session);
            });
        });
}

void MainWindowController::completeLockdown(const JoinedSession& session) {
    print("✅ Step 1/4: Fullscreen completato");
    startKeyboardHook();
    startWindowMonitor(session.result.meetLink);
    coverSecondaryDisplays();
    installStatusItem(session);
    startHeartbeat();
    window_->orderOut();
    print(separatorLine);
    print("✅✅✅ LOCKDOWN COMPLETO E ATTIVO ✅✅✅");
    print(separatorLine);
}

void MainWindowController::continueLockdown(const JoinedSession& session) {
    keyboardHook_->start();
    watchBrowser(session.result.meetLink);
    startHeartbeat();
}

void MainWindowController::startKeyboardHook() {
    print("🔒 Step 2/4: Attivazione keyboard hook...");
    keyboardHook_->start();
    if (keyboardHook_->isActive()) print("[LOCKDOWN] ✅ Keyboard hook verificato e attivo");
    print("✅ Step 2/4: Keyboard hook attivato");
}

void MainWindowController::startWindowMonitor(const std::string& meetLink) {
    print("🔒 Step 3/4: Avvio window monitor...");
    watchBrowser(meetLink);
    print("✅ Step 3/4: Window monitor avviato");
}

void MainWindowController::watchBrowser(const std::string& meetLink) {
    windowMonitor_->authorizedMeetURL = meetLink;
    windowMonitor_->startMonitoring(browserLauncher_);
    browserLauncher_->windowMonitor = windowMonitor_;
}

void MainWindowController::startHeartbeat() {
    heartbeat_->lockdownActive = true;
    heartbeat_->meetConnected = true;
    heartbeat_->start();
}

void MainWindowController::coverSecondaryDisplays() {
    print("🔒 Step 3.5: Blackout monitor secondari...");
    blackoutOverlay_ =
        makeMainThreadOwned<BlackoutOverlayManager>(computer_.dispatch, computer_.threads, computer_.screens,
                                                    computer_.overlays, computer_.mainRunLoop, computer_.log);
    blackoutOverlay_->activate(computer_.screens.mainScreen());
    print("✅ Step 3.5: " + std::to_string(blackoutOverlay_->windowCount()) + " monitor secondari coperti");
}

void MainWindowController::installStatusItem(const JoinedSession& session) {
    print("🔒 Step 4/4: Setup menu bar...");
    statusItem_ = computer_.statusBar.statusItem(variableStatusItemLength);
    statusItem_->setButtonTitle(statusItemTitle);
    statusItem_->setMenu(statusMenu(session.result.sessionTitle, session.code, [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->menuEndSession();
    }));
    print("✅ Step 4/4: Menu bar configurato");
}

void MainWindowController::menuEndSession() {
    if (confirmManualEnd(computer_.alerts)) endSession(SessionEndReason::userRequest);
}

void MainWindowController::endSession(SessionEndReason reason) {
    if (!isInLockdown_) return;
    isInLockdown_ = false;
    const auto text = std::string(message(reason));
    print("[SESSION] Fine sessione: " + text);

    if (keyboardHook_) keyboardHook_->stop();
    // Without a tap nothing is lost by asking a browser that hangs about each of its windows.
    accessibilityLimit_->insist();
    if (windowMonitor_) windowMonitor_->stopMonitoring();
    if (blackoutOverlay_) {
        blackoutOverlay_->deactivate();
        blackoutOverlay_.reset();
    }
    closeBrowserIfRunning();
    if (heartbeat_) {
        heartbeat_->sendDisconnect(reason);
        heartbeat_->stop();
    }
    keyboardHook_.reset();
    windowMonitor_.reset();
    browserLauncher_.reset();
    heartbeat_.reset();
    if (statusItem_) {
        computer_.statusBar.removeStatusItem(*statusItem_);
        statusItem_.reset();
    }

    setClosable(true);
    window_->makeKeyAndOrderFront();
    computer_.application.activate();
    endScreen_->setMessage(text);
    joinScreen_->setHidden(true);
    endScreen_->setHidden(false);
    accessibilityLimit_.reset();
    print("[SESSION] Schermata fine visibile, join hidden: true, end hidden: false");
}

void MainWindowController::closeBrowserIfRunning() {
    const auto process = browserLauncher_ ? browserLauncher_->browserPID() : std::nullopt;
    if (!process || !computer_.runningApplications.withProcessIdentifier(*process)) return;
    browserLauncher_->closeBrowser();
    print("[SESSION] Browser terminato");
}

void MainWindowController::resetToJoin() {
    endScreen_->setHidden(true);
    joinScreen_->setHidden(false);
    joinScreen_->showStatus("");
    setClosable(true);
    joinScreen_->fill();
}

void MainWindowController::checkForUpdates() {
    const auto typed = joinScreen_->serverFieldText();
    const auto base = withoutTrailingSlash(typed.empty() ? defaultServerAddress : typed);
    versionCheck_.send(base, clientVersion_, [weak = weak_from_this()](const URLReply& reply) {
        if (const auto self = weak.lock()) self->handleVersionReply(reply);
    });
}

void MainWindowController::handleVersionReply(const URLReply& reply) {
    const auto offer = versionCheck_.read(reply);
    if (!offer) return;
    computer_.dispatch.mainQueue().async([weak = weak_from_this(), offer = *offer] {
        if (const auto self = weak.lock()) self->showUpdateAlert(offer);
    });
}

void MainWindowController::setClosable(bool closable) {
    const auto mask = window_->styleMask();
    window_->setStyleMask(closable ? mask | windowClosable : mask & ~static_cast<unsigned>(windowClosable));
}

}  // namespace vantrel
