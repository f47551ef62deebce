#include "tests/linux/support/ProcessStates.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace vantrel::linuxdesktop {

std::set<pid_t> childrenOf(pid_t parent) {
    std::set<pid_t> found;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/" + std::to_string(parent) + "/task")) {
        std::ifstream children(thread.path() / "children");
        for (pid_t child = 0; children >> child;) found.insert(child);
    }
    return found;
}

char stateOf(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string text;
    std::getline(file, text);
    const std::size_t state = text.rfind(") ");
    return state != std::string::npos ? text[state + 2] : 'X';
}

// A pipe that it has open for writing.
bool isPresent(pid_t guard) {
    const std::filesystem::path process = "/proc/" + std::to_string(guard);
    std::error_code error;
    for (const auto& file : std::filesystem::directory_iterator(process / "fd", error)) {
        const std::string number = file.path().filename().string();
        const std::string target = std::filesystem::read_symlink(file.path(), error).string();
        if (std::stoi(number) <= STDERR_FILENO || target.rfind("pipe:", 0) != 0) continue;
        std::ifstream facts(process / "fdinfo" / number);
        std::string field;
        unsigned flags = 0;
        while (facts >> field && field != "flags:") std::getline(facts, field);
        if (facts >> std::oct >> flags && (flags & O_ACCMODE) == O_WRONLY) return true;
    }
    return false;
}

bool exists(pid_t process) {
    const char state = stateOf(process);
    return state != 'X' && state != 'Z';
}

}  // namespace vantrel::linuxdesktop
