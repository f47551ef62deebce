#include "platform/linux/apps/ProcessTable.h"

#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <filesystem>
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

std::string displayOf(std::string_view environment) {
    constexpr std::string_view name = "DISPLAY=";
    while (!environment.empty()) {
        const std::size_t end = std::min(environment.find('\0'), environment.size());
        const std::string_view entry = environment.substr(0, end);
        if (entry.starts_with(name)) return ProcessTable::displayName(std::string(entry.substr(name.size())));
        // Chromium leaves thousands of zeros.
        environment.remove_prefix(std::min(environment.find_first_not_of('\0', end), environment.size()));
    }
    return {};
}

bool isShell(const std::filesystem::path& executable) {
    const std::string name = executable.filename().string();
    return name == "sh" || name == "dash" || name == "bash" || name == "busybox";
}

// The path of the script that a shell runs. Empty if it runs none, or one that was found by its name alone.
std::string scriptOf(const std::vector<std::string>& arguments) {
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!argument.empty() && argument.front() != '-')
            return argument.find('/') != std::string::npos ? argument : "";
        // The next argument is commands and no path.
        if (argument.find('c') != std::string::npos) break;
    }
    return {};
}

// One call of the kernel; std::filesystem::read_symlink makes two. Empty if it cannot be read.
std::string linkTarget(const std::string& link) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = readlink(link.c_str(), target.data(), target.size());
    return {target.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

void readExecutable(ProcessEntry& entry) {
    const std::filesystem::path path = linkTarget(folder(entry.process) + "exe");
    const std::string script = isShell(path) ? scriptOf(entry.arguments) : std::string();
    entry.isScript = !script.empty();
    entry.executablePath = entry.isScript ? script : path.string();
    if (entry.executablePath.empty() && !entry.arguments.empty()) entry.executablePath = entry.arguments.front();
}

// Takes the next field from the front. They are separated by single spaces.
std::string_view nextField(std::string_view& fields) {
    const std::size_t end = std::min(fields.find(' '), fields.size());
    const std::string_view field = fields.substr(0, end);
    fields.remove_prefix(std::min(end + 1, fields.size()));
    return field;
}

template <typename Number>
bool read(std::string_view field, Number& number) {
    return std::from_chars(field.data(), field.data() + field.size(), number).ec == std::errc();
}

struct Facts {
    ProcessIdentifier parent = 0;
    std::uint64_t startTime = 0;
};

// Empty if there is no such process or it is a zombie.
std::optional<Facts> factsOf(ProcessIdentifier process) {
    if (process <= 0) return std::nullopt;
    const std::string text = readProcFile(folder(process) + "stat");
    // The name before the state is in brackets, and may itself contain brackets and spaces.
    const std::size_t name = text.rfind(") ");
    if (name == std::string::npos) return std::nullopt;
    std::string_view fields = std::string_view(text).substr(name + 2);
    const std::string_view state = nextField(fields);
    if (state == "Z" || state == "X") return std::nullopt;
    Facts facts;
    if (!read(nextField(fields), facts.parent)) return std::nullopt;
    constexpr int fieldsBetweenParentAndStart = 17;
    for (int skipped = 0; skipped < fieldsBetweenParentAndStart; ++skipped) nextField(fields);
    if (!read(nextField(fields), facts.startTime)) return std::nullopt;
    return facts;
}

}  // namespace

std::string ProcessTable::displayName(std::string value) {
    const std::size_t colon = value.rfind(':');
    if (colon == std::string::npos) return {};
    const std::size_t screen = value.find('.', colon);
    if (screen != std::string::npos) value.resize(screen);
    const std::string host = value.substr(0, colon);
    return host == "unix" || host.ends_with("/unix") ? value.substr(colon) : value;
}

std::optional<std::uint64_t> ProcessTable::startTime(ProcessIdentifier process) {
    const auto facts = factsOf(process);
    return facts ? std::optional(facts->startTime) : std::nullopt;
}

std::optional<ProcessEntry> ProcessTable::origin(ProcessIdentifier process) {
    const auto facts = factsOf(process);
    if (!facts) return std::nullopt;
    ProcessEntry entry;
    entry.process = process;
    entry.startTime = facts->startTime;
    entry.parent = facts->parent;
    return entry;
}

std::optional<ProcessEntry> ProcessTable::find(ProcessIdentifier process) {
    auto entry = origin(process);
    if (!entry) return std::nullopt;
    entry->arguments = split(readProcFile(folder(process) + "cmdline"));
    readExecutable(*entry);
    entry->display = displayOf(readProcFile(folder(process) + "environ"));
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
