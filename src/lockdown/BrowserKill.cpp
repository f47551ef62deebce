#include "lockdown/BrowserKill.h"

#include <optional>
#include <string>

namespace vantrel {
namespace {

constexpr double confirmationTimeout = 1.5;
constexpr double pollingInterval = 0.1;
constexpr int killSignal = 9;

/// Holds the launcher only here: the kill must not keep it alive while it waits.
std::optional<ProcessIdentifier> takeProcess(const std::weak_ptr<BrowserLauncher>& weak) {
    const auto launcher = weak.lock();
    const auto process = launcher ? launcher->browserPID() : std::nullopt;
    // So that no attempt brings the dying window back.
    if (process) launcher->cancelFullscreenRetry();
    return process;
}

}  // namespace

void BrowserKill::run(const std::weak_ptr<BrowserLauncher>& launcher) const {
    const auto process = takeProcess(launcher);
    if (!process) {
        log_.print("[MONITOR] Kill browser: PID non disponibile");
        return;
    }
    kill(*process);
    waitForEnd(*process);
    // Printed whatever the result.
    log_.print("[MONITOR] Kill browser: processo " + std::to_string(*process) + " confermato terminato");
}

void BrowserKill::kill(ProcessIdentifier process) const {
    const auto heading = "[MONITOR] Kill browser PID " + std::to_string(process) + ": ";
    const auto application = applications_.withProcessIdentifier(process);
    if (!application) {
        log_.print(heading + "NSRunningApplication non trovato, SIGKILL diretto");
        processes_.sendSignal(process, killSignal);
        return;
    }
    if (application->forceTerminate()) {
        log_.print(heading + "✅ OK");
        return;
    }
    log_.print(heading + "⚠️ forceTerminate fallito, fallback SIGKILL");
    processes_.sendSignal(process, killSignal);
}

void BrowserKill::waitForEnd(ProcessIdentifier process) const {
    const double deadline = clock_.uptime() + confirmationTimeout;
    while (clock_.uptime() < deadline && applications_.withProcessIdentifier(process)) {
        threads_.sleep(pollingInterval);
    }
}

}  // namespace vantrel
