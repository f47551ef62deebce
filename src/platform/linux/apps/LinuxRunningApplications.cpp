#include "platform/linux/apps/LinuxRunningApplications.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "platform/linux/apps/LinuxRunningApplication.h"
#include "platform/linux/apps/StartedBundles.h"
#include "platform/linux/x11/WindowClasses.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

namespace {

// A part of the script in a process of its own, such as a command whose output it reads. It lives for a moment.
bool isSubshell(const ProcessEntry& entry, const ProcessEntry& script) {
    return entry.isScript && entry.parent == script.process && entry.arguments == script.arguments;
}

void leaveScriptsOut(std::vector<ProcessEntry>& entries, const StartedBundles& started) {
    std::erase_if(entries,
                  [&started](const ProcessEntry& entry) { return started.takenFor(entry.process) != entry.process; });
    const std::vector<ProcessEntry> all = entries;
    std::erase_if(entries, [&all](const ProcessEntry& entry) {
        return entry.isScript && std::any_of(all.begin(), all.end(), [&entry](const ProcessEntry& other) {
                   return isSubshell(entry, other) || (other.parent == entry.process && !isSubshell(other, entry));
               });
    });
}

}  // namespace

LinuxRunningApplications::LinuxRunningApplications(Dependencies dependencies, const std::string& display)
    : connection_(dependencies.connection),
      windows_(dependencies.windows),
      delayedWork_(dependencies.delayedWork),
      started_(dependencies.started),
      display_(ProcessTable::displayName(display)) {}

std::vector<std::shared_ptr<RunningApplication>> LinuxRunningApplications::withBundleIdentifier(
    std::string_view identifier) const {
    const auto byWindow = ownersByClass(identifier);
    const auto name = [this, &byWindow](const ProcessEntry& entry) {
        const auto known = nameOf(entry);
        const auto owner = byWindow.find(entry.process);
        const bool isKnown = known && !known->bundleIdentifier.empty();
        return isKnown || owner == byWindow.end() ? known : nameOf(entry, {owner->second});
    };
    std::vector<ProcessEntry> entries;
    for (ProcessEntry& each : ProcessTable::all()) {
        ProcessEntry entry = asStarted(std::move(each));
        const auto named = name(entry);
        if (named && named->bundleIdentifier == identifier) entries.push_back(std::move(entry));
    }
    readScriptsAgain(entries);
    std::erase_if(entries, [&name, identifier](const ProcessEntry& entry) {
        const auto named = name(entry);
        return !named || named->bundleIdentifier != identifier;
    });
    leaveScriptsOut(entries, started_);
    std::vector<std::shared_ptr<RunningApplication>> found;
    found.reserve(entries.size());
    for (const ProcessEntry& entry : entries) found.push_back(make(entry, name(entry)));
    return found;
}

// In the midst of an exec the kernel shows neither arguments nor environment, which on a busy computer can take a tenth
// of a second. Chromium writes its title over its environment for good. What the client has started from a bundle has
// its display all the same.
ProcessEntry LinuxRunningApplications::asStarted(ProcessEntry entry) const {
    auto executable = started_.executableOf(entry);
    if (!executable) return entry;
    entry.executablePath = std::move(*executable);
    if (entry.display.empty()) entry.display = display_;
    return entry;
}

// Reading every process takes a while, in which a script may have become another one before its subshell was read. Each
// subshell that is known by now has the script's arguments of now.
void LinuxRunningApplications::readScriptsAgain(std::vector<ProcessEntry>& entries) const {
    for (ProcessEntry& entry : entries) {
        if (!entry.isScript) continue;
        const auto now = find(entry.process);
        entry = now && now->startTime == entry.startTime ? *now : ProcessEntry{};
    }
    std::erase_if(entries, [](const ProcessEntry& entry) { return entry.process == 0; });
}

std::optional<ProcessEntry> LinuxRunningApplications::find(ProcessIdentifier process) const {
    auto entry = ProcessTable::find(process);
    if (entry) entry = asStarted(std::move(*entry));
    return entry;
}

std::shared_ptr<RunningApplication> LinuxRunningApplications::withProcessIdentifier(ProcessIdentifier process) const {
    const auto entry = find(process);
    if (!entry) return nullptr;
    if (entry->isScript) started_.takeForBrowser(*entry);
    const auto name = nameOf(*entry);
    if (name && !name->bundleIdentifier.empty()) return make(*entry, name);
    return make(*entry, nameOf(*entry, windows_.ofProcess(process)));
}

std::shared_ptr<RunningApplication> LinuxRunningApplications::ofWindow(xcb_window_t window,
                                                                       ProcessIdentifier owner) const {
    const auto entry = find(owner);
    return entry ? make(*entry, nameOf(*entry, {window})) : nullptr;
}

std::optional<ApplicationName> LinuxRunningApplications::nameOf(const ProcessEntry& entry) const {
    // This process is the client, whatever its file is called.
    if (entry.process == getpid()) return ownApplicationName;
    if (isHelperProcess(entry.arguments) || entry.display.empty() || entry.display != display_) return std::nullopt;
    const ApplicationName known = applicationName(entry.executablePath, entry.arguments);
    if (known.bundleIdentifier.empty() && !StartedBundles::liesInBundle(entry.executablePath)) return std::nullopt;
    return known;
}

std::optional<ApplicationName> LinuxRunningApplications::nameOf(const ProcessEntry& entry,
                                                                const std::vector<xcb_window_t>& windows) const {
    const auto byExecutable = nameOf(entry);
    const bool isKnown = byExecutable && !byExecutable->bundleIdentifier.empty();
    if (isKnown || windows.empty() || isHelperProcess(entry.arguments)) return byExecutable;
    // Its environment names another display or cannot be read, but its window shows that it is here.
    const ApplicationName known = applicationName(entry.executablePath, entry.arguments);
    if (!known.bundleIdentifier.empty()) return known;
    for (const std::string& windowClass : windowClasses(connection_, windows)) {
        const ApplicationName named = applicationNameOfClass(windowClass);
        if (!named.bundleIdentifier.empty()) return named;
    }
    return known;
}

std::shared_ptr<RunningApplication> LinuxRunningApplications::make(const ProcessEntry& entry,
                                                                   const std::optional<ApplicationName>& name) const {
    return name ? std::make_shared<LinuxRunningApplication>(entry, *name, windows_, delayedWork_) : nullptr;
}

std::map<ProcessIdentifier, xcb_window_t> LinuxRunningApplications::ownersByClass(std::string_view identifier) const {
    const auto windows = connection_.values(connection_.root(), "_NET_CLIENT_LIST");
    const auto classes = windowClasses(connection_, windows);
    std::map<ProcessIdentifier, xcb_window_t> owners;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        if (applicationNameOfClass(classes[i]).bundleIdentifier != identifier) continue;
        owners.emplace(windows_.owner(windows[i]), windows[i]);
    }
    return owners;
}

}  // namespace vantrel::linuxdesktop
