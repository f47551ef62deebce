#include "lockdown/WindowMonitorService.h"

#include <algorithm>

#include "browser/AccessibilityWindows.h"
#include "lockdown/BrowserWindows.h"
#include "lockdown/SystemProcessWhitelist.h"
#include "lockdown/WholePart.h"
#include "lockdown/WindowDeviation.h"

namespace vantrel {
namespace {

constexpr int endingNotVisibleCount = 2;
constexpr double pauseAfterActivation = 0.5;
constexpr double pauseAfterSpaceChange = 0.3;
constexpr Size sizeWithoutMainScreen{1440, 900};
constexpr std::string_view bundleIdWithoutBundle = "biz.quorrin.vantrel";

/// The name of the detected browser, or `substitute` if there is none.
std::string nameOr(const BrowserLauncher& launcher, std::string_view substitute) {
    const auto browser = launcher.detectedBrowser();
    return std::string(browser ? displayName(*browser) : substitute);
}

}  // namespace

WindowMonitorService::WindowMonitorService(const Dependencies& dependencies, const BrowserKill& kill)
    : dependencies_(dependencies),
      kill_(kill),
      vantrelBundleId_(dependencies.mainBundle.identifier().value_or(std::string(bundleIdWithoutBundle))) {}

void WindowMonitorService::startMonitoring(const std::shared_ptr<BrowserLauncher>& launcher) {
    if (isActive_) return;
    browserLauncher_ = launcher;
    browserNotVisibleCount_ = 0;
    fullscreenConfirmed_ = false;
    startupGraceRemaining_ = startupGraceTicks;
    timer_ = dependencies_.mainRunLoop.scheduledTimer(checkInterval, true, [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->tick();
    });
    isActive_ = true;
    if (launcher->isConfirmedFullscreen()) {
        fullscreenConfirmed_ = true;
        print("[MONITOR] Fullscreen già confermato all'avvio");
    }
    observeSpaces();
    print("[MONITOR] Monitoraggio avviato");
}

void WindowMonitorService::stopMonitoring() {
    if (!isActive_) return;
    timer_.reset();
    spaceChangeObserver_.reset();
    isActive_ = false;
    print("[MONITOR] Monitoraggio fermato");
}

void WindowMonitorService::end(SessionEndReason reason) {
    stopMonitoring();
    if (onSessionEnded) onSessionEnded(reason);
}

void WindowMonitorService::tick() {
    const auto launcher = browserLauncher_.lock();
    if (!launcher) return;
    const auto process = runningBrowser(*launcher);
    if (!process) {
        handleMissingBrowser(*launcher);
        return;
    }
    startupGraceRemaining_ = 0;
    if (!isBrowserWindowVisible(*process)) {
        handleInvisibleWindow(*process);
        return;
    }
    browserNotVisibleCount_ = 0;
    checkGeometry(*launcher, *process);
    checkFocus(*launcher, *process);
}

void WindowMonitorService::handleMissingBrowser(BrowserLauncher& launcher) {
    if (startupGraceRemaining_ < 1) {
        print("[MONITOR] " + nameOr(launcher, "Browser") + " non in esecuzione — fine sessione");
        end(SessionEndReason::browserCrashed);
        return;
    }
    --startupGraceRemaining_;
    const auto browser = launcher.detectedBrowser();
    const auto running = browser ? dependencies_.applications.withBundleIdentifier(rawValue(*browser))
                                 : std::vector<std::shared_ptr<RunningApplication>>();
    if (!running.empty()) launcher.adoptRunningApplication(running.front());
    print(std::string(running.empty() ? "[MONITOR] Browser non trovato — grace period attivo ("
                                      : "[MONITOR] PID recuperato per bundle ID durante grace period (") +
          std::to_string(startupGraceRemaining_) + " tick rimanenti)");
}

void WindowMonitorService::handleInvisibleWindow(ProcessIdentifier process) {
    ++browserNotVisibleCount_;
    print("[MONITOR] Finestra non visibile (" + std::to_string(browserNotVisibleCount_) + "/" +
          std::to_string(notVisibleThreshold) + ")");
    if (browserNotVisibleCount_ < endingNotVisibleCount) return;
    if (hasWindowAtAll(allWindows(), process)) {
        print("[MONITOR] Finestra su altro Space — falso negativo ignorato, reset contatore");
        browserNotVisibleCount_ = 0;
        return;
    }
    print(std::string("[MONITOR] ") +
          (fullscreenConfirmed_ ? "Finestra chiusa da fullscreen" : "Finestra chiusa con X") +
          " — fine sessione immediata");
    end(SessionEndReason::meetWindowClosed);
}

void WindowMonitorService::checkGeometry(BrowserLauncher& launcher, ProcessIdentifier process) {
    const auto windows = accessibilityWindows(dependencies_.accessibility, process);
    if (windows.empty()) return;
    const auto isInFullscreen = [](const auto& window) { return isFullscreen(*window).value_or(false); };
    if (std::any_of(windows.begin(), windows.end(), isInFullscreen) || fullscreenConfirmed_) return;

    auto& window = *windows.front();
    const Rect frame = accessibilityFrame(window);
    const auto screen = dependencies_.screens.mainScreen();
    if (!screen) return;
    const auto deviation = windowDeviation(frame, screen->frame);
    if (deviation.isNone()) return;
    if (deviation.moved) {
        print("[MONITOR] Finestra spostata pos:(" + std::to_string(wholePart(frame.origin.x)) + "," +
              std::to_string(wholePart(frame.origin.y)) + ") — ripristino");
    }
    if (!deviation.sizeCorrect) {
        print("[MONITOR] Finestra ridimensionata (" + std::to_string(wholePart(deviation.widthRatio * 100)) + "%×" +
              std::to_string(wholePart(deviation.heightRatio * 100)) + "%) — ripristino");
    }
    setFrame(window, screen->frame);
    enforceFullscreenSoon(launcher);
}

void WindowMonitorService::enforceFullscreenSoon(BrowserLauncher& launcher) {
    if (const auto application = launcher.browserApp()) application->activate(ActivationOptions::none);
    dependencies_.dispatch.mainQueue().asyncAfter(pauseAfterActivation, [weak = launcher.weak_from_this()] {
        if (const auto browser = weak.lock()) browser->attemptFullscreen();
    });
}

void WindowMonitorService::checkFocus(BrowserLauncher& launcher, ProcessIdentifier process) {
    const auto frontmost = dependencies_.frontmost.frontmostApplication();
    if (!frontmost) return;
    const auto name = frontmost->localizedName().value_or("");
    const auto identifier = frontmost->bundleIdentifier().value_or("");
    if (isWhitelisted(name) || isWhitelisted(identifier)) return;
    if (identifier == vantrelBundleId_) return;

    const auto browser = launcher.detectedBrowser();
    if (identifier != (browser ? rawValue(*browser) : std::string_view())) {
        print("[MONITOR] Focus su " + name + " — riporto " + nameOr(launcher, "browser") + " in primo piano");
        if (onViolation) onViolation(name);
        launcher.bringToFront();
        return;
    }
    if (!fullscreenConfirmed_ || isFocusedWindowFullscreen(process)) return;
    print("[MONITOR] " + name + " frontmost ma finestra sbagliata — ripristino lockdown");
    enforceFullscreenSoon(launcher);
}

bool WindowMonitorService::isFocusedWindowFullscreen(ProcessIdentifier process) const {
    const auto window = accessibilityFocusedWindow(dependencies_.accessibility, process);
    return !window || isFullscreen(*window).value_or(false);
}

void WindowMonitorService::observeSpaces() {
    spaceChangeObserver_ = dependencies_.spaces.observeActiveSpaceDidChange([weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->handleSpaceChange();
    });
}

void WindowMonitorService::handleSpaceChange() {
    if (!fullscreenConfirmed_) return;
    // The notification arrives while window flags still show the old state.
    dependencies_.dispatch.mainQueue().asyncAfter(pauseAfterSpaceChange, [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->checkSpace();
    });
}

void WindowMonitorService::checkSpace() {
    if (!isActive_ || !fullscreenConfirmed_) return;
    const auto launcher = browserLauncher_.lock();
    const auto known = launcher ? launcher->browserPID() : std::nullopt;
    // The next tick handles a window that is gone or a browser that is not known.
    if (!known) return;
    const auto windows = allWindows();
    if (runningBrowser(*launcher) && hasLargeWindowOnScreen(windows, *known, screenSize())) {
        print("[MONITOR] Space cambiato ma Meet è sullo Space corrente — OK");
        return;
    }
    if (!hasWindowAtAll(windows, *known)) return;
    print("[MONITOR] ⚠️ Utente cambiato a Space diverso da Meet — kill browser e fine sessione");
    stopMonitoring();
    dependencies_.dispatch.userInitiatedQueue().async([weak = weak_from_this(), browser = browserLauncher_] {
        // A copy, so that the waiting kill does not keep the monitor alive.
        std::optional<BrowserKill> kill;
        if (const auto self = weak.lock()) kill.emplace(self->kill_);
        if (kill) kill->run(browser);
    });
    if (onSessionEnded) onSessionEnded(SessionEndReason::meetWindowClosed);
}

std::optional<ProcessIdentifier> WindowMonitorService::runningBrowser(const BrowserLauncher& launcher) const {
    const auto process = launcher.browserPID();
    if (!process || !dependencies_.applications.withProcessIdentifier(*process)) return std::nullopt;
    return process;
}

bool WindowMonitorService::isBrowserWindowVisible(ProcessIdentifier process) const {
    const auto windows = allWindows();
    // A full-screen window has its own Space, and is not on the screen while another Space is shown.
    return fullscreenConfirmed_ ? hasLargeWindow(windows, process, screenSize())
                                : hasLargeWindowOnScreen(windows, process, screenSize());
}

WindowMonitorService::Windows WindowMonitorService::allWindows() const {
    return dependencies_.windows.copy(WindowListOption::all).value_or(Windows());
}

Size WindowMonitorService::screenSize() const {
    const auto screen = dependencies_.screens.mainScreen();
    return screen ? screen->frame.size : sizeWithoutMainScreen;
}

}  // namespace vantrel
