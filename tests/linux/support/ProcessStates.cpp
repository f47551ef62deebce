#include "tests/linux/support/ProcessStates.h"

#include <filesystem>
#include <fstream>
#include <string>

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

bool exists(pid_t process) {
    const char state = stateOf(process);
    return state != 'X' && state != 'Z';
}

}  // namespace vantrel::linuxdesktop
