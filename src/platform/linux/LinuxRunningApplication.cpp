#include "platform/linux/LinuxRunningApplication.h"

#include <signal.h>

#include <filesystem>

#include "platform/linux/X11Windows.h"

namespace vantrel::linuxdesktop {

namespace {

std::string executableName(const std::filesystem::path& path) {
    // A bundle is called after its folder.
    for (const auto& component : path) {
        if (component.extension() == ".app" && component.has_stem()) return component.stem().string();
    }
    return path.filename().string();
}

}  // namespace

LinuxRunningApplication::LinuxRunningApplication(const ProcessEntry& entry, const ApplicationName& name,
                                                 X11Windows& windows)
    : process_(entry.process),
      startTime_(entry.startTime),
      bundleIdentifier_(name.bundleIdentifier),
      name_(name.localizedName.empty() ? executableName(entry.executablePath) : name.localizedName),
      windows_(windows) {}

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
