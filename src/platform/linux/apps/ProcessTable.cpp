#include "platform/linux/apps/ProcessTable.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <sstream>
#include <string_view>
#include <system_error>
#include <tuple>

#include "platform/linux/apps/ProcFile.h"

namespace vantrel::linuxdesktop {

namespace {

std::string folder(ProcessIdentifier process) {
    return "/proc/" + std::to_string(process) + "/";
}

bool isOfThisUser(ProcessIdentifier process) {
    struct stat status {};
    return stat(folder(process).c_str(), &status) == 0 && status.st_uid == getuid();
}

std::vector<std::string> split(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t from = 0;
    while (from < text.size()) {
        const std::size_t end = std::min(text.find('\0', from), text.size());
        parts.push_back(text.substr(from, end - from));
        from = end + 1;
    }
    return parts;
}

std::string displayOf(const std::vector<std::string>& environment) {
    constexpr std::string_view name = "DISPLAY=";
    for (const std::string& entry : environment) {
        if (entry.rfind(name, 0) == 0) return ProcessTable::displayName(entry.substr(name.size()));
    }
    return {};
}

// A bundle's wrapper script runs as a shell with the script's path as its first argument.
std::string executableOf(ProcessIdentifier process, const std::vector<std::string>& arguments) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::read_symlink(folder(process) + "exe", error);
    const std::string name = path.filename().string();
    const bool shell = name == "sh" || name == "dash" || name == "bash" || name == "busybox";
    if (shell && arguments.size() > 1 && arguments[1].find(".app/Contents/MacOS/") != std::string::npos) {
        return arguments[1];
    }
    if (path.empty() && !arguments.empty()) return arguments.front();
    return path.string();
}

// The fields of the process's entry, from its state on. Empty if there is none. The name before them, in brackets, may
// itself contain brackets and spaces.
std::istringstream fieldsFromState(ProcessIdentifier process) {
    if (process <= 0) return {};
    const std::string text = readProcFile(folder(process) + "stat");
    const std::size_t bracket = text.rfind(')');
    return std::istringstream(bracket == std::string::npos ? std::string() : text.substr(bracket + 1));
}

}  // namespace

bool ProcessTable::isStopped(ProcessIdentifier process) {
    std::string state;
    return fieldsFromState(process) >> state && state == "T";
}

std::string ProcessTable::displayName(std::string value) {
    const std::size_t colon = value.rfind(':');
    if (colon == std::string::npos) return {};
    const std::size_t screen = value.find('.', colon);
    if (screen != std::string::npos) value.resize(screen);
    const std::string host = value.substr(0, colon);
    return host == "unix" || host.ends_with("/unix") ? value.substr(colon) : value;
}

std::optional<std::uint64_t> ProcessTable::startTime(ProcessIdentifier process) {
    std::istringstream fields = fieldsFromState(process);
    std::string state;
    fields >> state;
    if (state.empty() || state == "Z" || state == "X") return std::nullopt;
    std::string field;
    constexpr int fieldsBetweenStateAndStart = 18;
    for (int skipped = 0; skipped < fieldsBetweenStateAndStart; ++skipped) fields >> field;
    std::uint64_t start = 0;
    if (!(fields >> start)) return std::nullopt;
    return start;
}

std::optional<ProcessEntry> ProcessTable::find(ProcessIdentifier process) {
    const std::optional<std::uint64_t> start = startTime(process);
    if (!start) return std::nullopt;
    ProcessEntry entry;
    entry.process = process;
    entry.startTime = *start;
    entry.arguments = split(readProcFile(folder(process) + "cmdline"));
    entry.executablePath = executableOf(process, entry.arguments);
    entry.display = displayOf(split(readProcFile(folder(process) + "environ")));
    return entry;
}

std::vector<ProcessEntry> ProcessTable::all() {
    std::vector<ProcessEntry> entries;
    std::error_code error;
    for (auto item = std::filesystem::directory_iterator("/proc", error);
         !error && item != std::filesystem::directory_iterator(); item.increment(error)) {
        const std::string name = item->path().filename().string();
        ProcessIdentifier process = 0;
        const auto [end, failure] = std::from_chars(name.data(), name.data() + name.size(), process);
        if (failure != std::errc() || end != name.data() + name.size()) continue;
        if (!isOfThisUser(process)) continue;
        if (auto entry = find(process)) entries.push_back(std::move(*entry));
    }
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
        return std::tie(a.startTime, a.process) < std::tie(b.startTime, b.process);
    });
    return entries;
}

}  // namespace vantrel::linuxdesktop
