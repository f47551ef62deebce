#include "browser/BrowserLauncher.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <variant>
#include <vector>

#include "browser/AccessibilityWindows.h"
#include "browser/MeetingAddress.h"

namespace vantrel {
namespace {

constexpr double processSettlingTime = 2.0;
constexpr double pauseBeforeFirstAttempt = 1.0;
constexpr double workspaceSettlingTime = 3.0;
constexpr double pauseAfterActivation = 0.5;
constexpr double retryInterval = 2.0;
constexpr Rect frameWithoutMainScreen{{0, 0}, {1440, 900}};
constexpr std::string_view safariAddress = "file:///Applications/Safari.app";

}  // namespace

BrowserLauncher::BrowserLauncher(const Dependencies& dependencies, Detection detect)
    : dependencies_(dependencies),
      detect_(std::move(detect)),
      discovery_(dependencies.windows, dependencies.clock, dependencies.threads),
      shutdown_(dependencies.accessibility, dependencies.clock, dependencies.threads) {}

void BrowserLauncher::resetState() {
    replaceRetryTimer(nullptr);
    change([](State& state) { state = State(); });
    print("[BROWSER] Reset stato per nuova sessione");
}

void BrowserLauncher::launch(const std::string& meetURL) {
    resetState();
    const auto address = meetingAddress(meetURL);
    print("[BROWSER] URL Meet: " + address);

    const auto browser = detect_(dependencies_.files);
    change([&browser](State& state) { state.detectedBrowser = browser; });
    if (!browser) {
        print("[BROWSER] ❌ Nessun browser trovato");
        return;
    }
    print("[BROWSER] Browser selezionato: " + std::string(displayName(*browser)));

    const auto before = discovery_.onScreen();
    print("[BROWSER] Finestre prima: " + std::to_string(before.size()));
    if (*browser == SupportedBrowser::chrome || *browser == SupportedBrowser::edge) {
        launchProcess(address, *browser);
    } else {
        openInSafari(address, before);
    }
}

void BrowserLauncher::launchProcess(const std::string& meetURL, SupportedBrowser browser) {
    const auto name = std::string(displayName(browser));
    const auto candidates = executableCandidates(browser, dependencies_.files);
    const auto executable = std::find_if(candidates.begin(), candidates.end(), [this](const std::string& path) {
        return dependencies_.files.fileExists(path);
    });
    if (executable == candidates.end()) {
        print("[BROWSER] ❌ Eseguibile non trovato per " + name);
        return;
    }

    const auto preExisting = firstRunning(browser);
    change([&preExisting](State& state) { state.wasPreExisting = preExisting != nullptr; });
    if (preExisting) {
        // The text names Chrome for every browser that is launched this way.
        print("[BROWSER] Chrome già in esecuzione, PID pre-launch: " +
              std::to_string(preExisting->processIdentifier()));
    }

    const auto arguments = launchArguments(browser, meetURL);
    print("[BROWSER] Lancio " + name + " con args: " + arguments[0] + " " + arguments[1]);
    const auto started = dependencies_.processes.launch(*executable, arguments);
    if (const auto* error = std::get_if<PlatformError>(&started)) {
        print("[BROWSER] ❌ Errore lancio: " + error->localizedDescription);
        return;
    }

    dependencies_.threads.sleep(processSettlingTime);
    settleProcess(browser, std::get<ProcessIdentifier>(started), preExisting);
    dependencies_.threads.sleep(pauseBeforeFirstAttempt);
    dependencies_.dispatch.mainQueue().async([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self) return;
        self->change([](State& state) {
            state.fullscreenRetryCount = 0;
            state.isConfirmedFullscreen = false;
        });
        self->attemptFullscreen();
    });
}

void BrowserLauncher::settleProcess(SupportedBrowser browser, ProcessIdentifier started,
                                    const std::shared_ptr<RunningApplication>& preExisting) {
    const auto heading = "[BROWSER] " + std::string(displayName(browser)) + " PID ";
    if (preExisting) {
        take(preExisting);
        print(heading + "(pre-existing): " + std::to_string(preExisting->processIdentifier()));
    } else if (const auto running = firstRunning(browser)) {
        take(running);
        print(heading + "(new): " + std::to_string(running->processIdentifier()));
    } else {
        const auto application = dependencies_.applications.withProcessIdentifier(started);
        change([&](State& state) {
            state.browserPID = started;
            state.browserApp = application;
        });
        print(heading + "(fallback): " + std::to_string(started));
    }
}

void BrowserLauncher::openInSafari(const std::string& meetURL, const WindowDiscovery::Windows& before) {
    const auto meeting = dependencies_.urls.form(meetURL);
    const auto safari = dependencies_.urls.form(safariAddress);
    if (!meeting || !safari) return;

    dependencies_.opener.open(
        {*meeting}, *safari, true,
        [weak = weak_from_this(), &dispatch = dependencies_.dispatch](const ApplicationOpener::Result& result) {
            dispatch.mainQueue().async([weak, result] {
                if (const auto self = weak.lock()) self->handleOpened(result);
            });
        });
    waitForNewWindow(before);
    dependencies_.threads.sleep(workspaceSettlingTime);
    dependencies_.dispatch.mainQueue().async([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self) return;
        if (const auto application = self->browserApp()) application->activate(ActivationOptions::none);
        self->dependencies_.dispatch.mainQueue().asyncAfter(pauseAfterActivation,
                                                            [self] { self->attemptFullscreen(); });
    });
}

void BrowserLauncher::handleOpened(const ApplicationOpener::Result& result) {
    if (const auto* error = std::get_if<PlatformError>(&result)) {
        print("[BROWSER] ❌ Errore: " + error->localizedDescription);
        if (onSessionEnded) onSessionEnded("Impossibile avviare Safari");
        return;
    }
    const auto application = std::get<std::shared_ptr<RunningApplication>>(result);
    if (!application) return;
    take(application);
    print("[BROWSER] Safari PID: " + std::to_string(application->processIdentifier()));
}

void BrowserLauncher::waitForNewWindow(const WindowDiscovery::Windows& before) {
    const auto found = discovery_.waitForNewWindow(
        before, [this] { return browserPID(); }, displayName(detectedBrowser().value_or(SupportedBrowser::safari)));
    if (!found) {
        print("[BROWSER] ⚠ Finestra non trovata entro timeout");
        return;
    }
    change([&found](State& state) {
        state.windowNumber = found->number;
        if (!state.browserPID && found->owner != 0) state.browserPID = found->owner;
    });
    print("[BROWSER] Nuova finestra #" + std::to_string(found->number) + ": '" + found->title +
          "' pid=" + std::to_string(found->owner));
}

std::shared_ptr<RunningApplication> BrowserLauncher::firstRunning(SupportedBrowser browser) const {
    const auto running = dependencies_.applications.withBundleIdentifier(rawValue(browser));
    return running.empty() ? nullptr : running.front();
}

void BrowserLauncher::take(const std::shared_ptr<RunningApplication>& application) {
    change([&application](State& state) {
        state.browserApp = application;
        state.browserPID = application->processIdentifier();
    });
}

void BrowserLauncher::attemptFullscreen() {
    if (isConfirmedFullscreen()) return;
    if (fullscreenRetryCount() >= maxFullscreenRetries) {
        print("[FULLSCREEN] Max retry raggiunti — rimango massimizzato");
        confirmFullscreen();
        return;
    }
    int attempt = 0;
    std::optional<ProcessIdentifier> process;
    change([&](State& state) {
        attempt = ++state.fullscreenRetryCount;
        process = state.browserPID;
    });
    print("[FULLSCREEN] Tentativo " + std::to_string(attempt) + "/" + std::to_string(maxFullscreenRetries) + "...");
    // If the browser is still unknown, the series ends for good.
    if (!process) return;

    const auto windows = accessibilityWindows(dependencies_.accessibility, *process);
    if (windows.empty()) {
        print("[FULLSCREEN] Nessuna finestra AX — riprovo tra 2s");
        scheduleFullscreenRetry();
        return;
    }
    auto& window = *windows.front();
    if (isFullscreen(window).value_or(false)) {
        print("[FULLSCREEN] ✅ Già in fullscreen");
        confirmFullscreen();
        return;
    }
    const auto error = setFullscreen(window, true);
    if (error == accessibilitySuccess) {
        print("[FULLSCREEN] ✅ Fullscreen attivato via AX");
        confirmFullscreen();
        return;
    }
    print("[FULLSCREEN] AX fallito (code: " + std::to_string(error) + ") — riprovo tra 2s");
    maximise(window);
    scheduleFullscreenRetry();
}

void BrowserLauncher::confirmFullscreen() {
    change([](State& state) { state.isConfirmedFullscreen = true; });
    if (const auto monitor = windowMonitor.lock()) {
        monitor->setFullscreenConfirmed(true);
        print("[MONITOR] Fullscreen confermato");
    }
}

void BrowserLauncher::maximise(AccessibilityElement& window) {
    // The screen's frame as it is. Its origin is at another corner than that of a position, but it is not converted.
    const auto screen = dependencies_.screens.mainScreen();
    setFrame(window, screen ? screen->frame : frameWithoutMainScreen);
}

void BrowserLauncher::scheduleFullscreenRetry() {
    replaceRetryTimer(nullptr);
    auto& mainQueue = dependencies_.dispatch.mainQueue();
    replaceRetryTimer(
        dependencies_.mainRunLoop.scheduledTimer(retryInterval, false, [weak = weak_from_this(), &mainQueue] {
            if (const auto self = weak.lock()) {
                if (const auto application = self->browserApp()) application->activate(ActivationOptions::none);
            }
            mainQueue.asyncAfter(pauseAfterActivation, [weak] {
                if (const auto self = weak.lock()) self->attemptFullscreen();
            });
        }));
}

void BrowserLauncher::replaceRetryTimer(std::unique_ptr<Timer> timer) {
    // The old timer is invalidated after the lock is released.
    const std::lock_guard guard(lock_);
    fullscreenRetryTimer_.swap(timer);
}

void BrowserLauncher::cancelFullscreenRetry() {
    replaceRetryTimer(nullptr);
    print("[BROWSER] Fullscreen retry timer cancellato");
}

void BrowserLauncher::bringToFront() {
    const auto application = browserApp();
    if (!application) return;
    application->activate(ActivationOptions::ignoringOtherApps);
    print("[BROWSER] " + browserName() + " portato in primo piano");
}

void BrowserLauncher::adoptRunningApplication(const std::shared_ptr<RunningApplication>& application) {
    constexpr ProcessIdentifier none = -1;
    const auto old = browserPID().value_or(none);
    take(application);
    print("[BROWSER] PID aggiornato: " + std::to_string(old) + " → " +
          std::to_string(application->processIdentifier()) + " (recupero post-fork)");
}

void BrowserLauncher::closeBrowser() {
    replaceRetryTimer(nullptr);
    const auto process = browserPID();
    if (!process) return;
    change([](State& state) { state.isConfirmedFullscreen = false; });
    if (wasPreExisting()) {
        print("[BROWSER] Chiudo finestra lockdown (" + browserName() + " pre-existing, processo non killato)");
        shutdown_.closeWindows(*process);
    } else {
        print("[BROWSER] Kill " + browserName());
        shutdown_.terminate(browserApp());
    }
    change([](State& state) {
        state.browserPID.reset();
        state.browserApp.reset();
        state.windowNumber.reset();
        state.wasPreExisting = false;
    });
}

std::string BrowserLauncher::browserName() const {
    const auto browser = detectedBrowser();
    return browser ? std::string(displayName(*browser)) : "browser";
}

}  // namespace vantrel
