#include "platform/linux/apps/LinuxApplicationOpener.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/linux/apps/ApplicationBundle.h"
#include "platform/linux/apps/ApplicationNames.h"
#include "platform/linux/apps/ProcessTable.h"
#include "platform/linux/system/InstalledBrowsers.h"
#include "platform/linux/x11/X11Windows.h"
#include "platform/portable/UTF8Validity.h"

namespace vantrel::linuxdesktop {

namespace {

std::optional<std::string> executableIn(const std::filesystem::path& folder) {
    std::error_code error;
    if (std::filesystem::is_directory(folder, error)) return applicationExecutable(folder).string();
    const auto installed = installedBrowser(folder.string());
    return installed ? std::optional(installed->executable) : std::nullopt;
}

}  // namespace

LinuxApplicationOpener::LinuxApplicationOpener(ProcessLauncher& launcher, const RunningApplications& applications,
                                               X11Windows& windows, DelayedWork& delayedWork)
    : launcher_(launcher), applications_(applications), windows_(windows), queue_(delayedWork) {}

LinuxApplicationOpener::~LinuxApplicationOpener() {
    const std::lock_guard lock(mutex_);
    isGoing_ = true;
    going_.notify_all();
}

void LinuxApplicationOpener::open(const std::vector<URL>& urls, const URL& application, bool activates,
                                  Completion completion) {
    queue_.async([this, urls, application, activates, completion = std::move(completion)] {
        completion(opened(urls, application, activates));
    });
}

ApplicationOpener::Result LinuxApplicationOpener::opened(const std::vector<URL>& urls, const URL& application,
                                                         bool activates) {
    const auto folder = applicationFolder(application);
    if (!folder) return PlatformError{"“" + application.absoluteString + "” non è un’applicazione."};
    const std::string name = "“" + repairedUTF8(folder->stem().string()) + "”";
    const auto executable = executableIn(*folder);
    if (!executable) return PlatformError{"Impossibile trovare l’applicazione " + name + "."};
    std::vector<std::string> arguments;
    arguments.reserve(urls.size());
    for (const URL& url : urls) arguments.push_back(url.absoluteString);
    const auto launched = launcher_.launch(*executable, arguments);
    if (const auto* failure = std::get_if<PlatformError>(&launched)) {
        return PlatformError{"Impossibile aprire l’applicazione " + name + ". " + failure->localizedDescription};
    }
    auto running =
        settled(std::get<ProcessIdentifier>(launched), std::string(applicationName(*executable, {}).bundleIdentifier));
    if (running && activates) running->activate(ActivationOptions::ignoringOtherApps);
    return running;
}

std::shared_ptr<RunningApplication> LinuxApplicationOpener::settled(ProcessIdentifier started,
                                                                    const std::string& bundleIdentifier) {
    // Two seconds in all.
    constexpr int mostSteps = 40;
    constexpr double step = 0.05;
    for (int count = 0; count < mostSteps; ++count) {
        if (!ProcessTable::startTime(started) || !windows_.ofProcess(started).empty()) break;
        if (!sleep(step)) break;
    }
    auto application = applications_.withProcessIdentifier(started);
    if (application || bundleIdentifier.empty()) return application;
    const auto others = applications_.withBundleIdentifier(bundleIdentifier);
    return others.empty() ? nullptr : others.front();
}

bool LinuxApplicationOpener::sleep(double seconds) {
    std::unique_lock lock(mutex_);
    return !going_.wait_for(lock, std::chrono::duration<double>(seconds), [this] { return isGoing_; });
}

}  // namespace vantrel::linuxdesktop
