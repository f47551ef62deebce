#include "platform/linux/apps/LinuxRunningApplication.h"

#include <signal.h>

#include <filesystem>

#include "platform/linux/threads/DelayedWork.h"
#include "platform/linux/x11/X11Windows.h"
#include "platform/portable/UTF8Validity.h"

namespace vantrel::linuxdesktop {

namespace {

std::string executableName(const std::filesystem::path& path) {
    // A bundle has the name of its folder.
    for (const auto& component : path) {
        if (component.extension() == ".app" && component.has_stem()) return repairedUTF8(component.stem().string());
    }
    return repairedUTF8(path.filename().string());
}

// Shorter than the client's wait before it forces an application to end, and early enough for the signal to work.
constexpr double patienceWithWindows = 1.5;

// The number may belong to another process by now.
bool isGone(ProcessIdentifier process, std::uint64_t startTime) {
    return ProcessTable::startTime(process) != startTime;
}

bool sendSignal(ProcessIdentifier process, std::uint64_t startTime, int signal) {
    return !isGone(process, startTime) && kill(process, signal) == 0;
}

}  // namespace

LinuxRunningApplication::LinuxRunningApplication(const ProcessEntry& entry, const ApplicationName& name,
                                                 X11Windows& windows, DelayedWork& delayedWork)
    : process_(entry.process),
      startTime_(entry.startTime),
      bundleIdentifier_(name.bundleIdentifier),
      name_(name.localizedName.empty() ? executableName(entry.executablePath) : name.localizedName),
      windows_(windows),
      delayedWork_(delayedWork) {}

std::optional<std::string> LinuxRunningApplication::bundleIdentifier() const {
    if (bundleIdentifier_.empty()) return std::nullopt;
    return bundleIdentifier_;
}

std::optional<std::string> LinuxRunningApplication::localizedName() const {
    if (name_.empty()) return std::nullopt;
    return name_;
}

bool LinuxRunningApplication::isTerminated() const {
    return isGone(process_, startTime_);
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
    const auto windows = windows_.ofProcess(process_);
    if (windows.empty()) return sendSignal(process_, startTime_, SIGTERM);
    const Processes asked = behind();
    for (const auto window : windows) windows_.close(window);
    delayedWork_.after(patienceWithWindows, [asked] {
        for (const auto& [process, startTime] : asked) sendSignal(process, startTime, SIGTERM);
    });
    return true;
}

bool LinuxRunningApplication::forceTerminate() {
    for (const auto& [process, startTime] : behind()) {
        if (process != process_) sendSignal(process, startTime, SIGKILL);
    }
    return sendSignal(process_, startTime_, SIGKILL);
}

// A script that waits for the browser ends with it.
LinuxRunningApplication::Processes LinuxRunningApplication::behind() const {
    Processes found;
    for (const auto process : windows_.behind(process_)) {
        if (const auto startTime = ProcessTable::startTime(process)) found.emplace_back(process, *startTime);
    }
    return found;
}

}  // namespace vantrel::linuxdesktop
