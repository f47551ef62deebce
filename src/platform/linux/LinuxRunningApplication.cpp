#include "platform/linux/LinuxRunningApplication.h"

#include <signal.h>
#include <unistd.h>

#include <filesystem>

#include "platform/linux/ApplicationNames.h"
#include "platform/linux/X11Windows.h"

namespace vantrel::linuxdesktop {

LinuxRunningApplication::LinuxRunningApplication(const ProcessEntry& entry, X11Windows& windows)
    : process_(entry.process), startTime_(entry.startTime), windows_(windows) {
    const ApplicationName known = applicationName(entry.executablePath, entry.arguments);
    bundleIdentifier_ = known.bundleIdentifier;
    name_ = known.localizedName;
    if (name_.empty()) name_ = std::filesystem::path(entry.executablePath).filename().string();
    // Started under whatever file name, this process is the client.
    if (process_ == getpid()) bundleIdentifier_ = ownBundleIdentifier;
}

std::optional<std::string> LinuxRunningApplication::bundleIdentifier() const {
    if (bundleIdentifier_.empty()) return std::nullopt;
    return bundleIdentifier_;
}

std::optional<std::string> LinuxRunningApplication::localizedName() const {
    if (name_.empty()) return std::nullopt;
    return name_;
}

bool LinuxRunningApplication::isTerminated() const {
    // The number may have been given to another process since.
    return ProcessTable::startTime(process_) != startTime_;
}

bool LinuxRunningApplication::activate(ActivationOptions) {
    if (isTerminated()) return false;
    const auto windows = windows_.ofProcess(process_);
    if (windows.empty()) return false;
    windows_.activate(windows.front());
    return true;
}

bool LinuxRunningApplication::terminate() {
    if (isTerminated()) return false;
    for (const auto window : windows_.ofProcess(process_)) windows_.close(window);
    return sendSignal(SIGTERM);
}

bool LinuxRunningApplication::forceTerminate() {
    return sendSignal(SIGKILL);
}

bool LinuxRunningApplication::sendSignal(int signal) const {
    return !isTerminated() && kill(process_, signal) == 0;
}

}  // namespace vantrel::linuxdesktop
