// The tests' own application on an X11 desktop. ContractHost::peerExecutable() lists its arguments. It leaves a file
// with the arguments it received beside its executable. It ends with the X server, with its parent or with its
// executable.
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "tests/contracts/PeerOptions.h"
#include "tests/linux/peer/PeerWindows.h"

namespace {

// Each argument ends with a zero byte. Written under another name first, so that the file appears complete.
void leaveArguments(const std::filesystem::path& executable, const std::vector<std::string>& arguments) {
    const std::filesystem::path file = executable.parent_path() / ("arguments-" + std::to_string(getpid()));
    const std::filesystem::path unfinished = file.string() + ".new";
    {
        std::ofstream stream(unfinished);
        for (const std::string& argument : arguments) stream << argument << '\0';
    }
    std::filesystem::rename(unfinished, file);
}

}  // namespace

int main(int argc, char** argv) {
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe");
    const pid_t parent = getppid();
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto options = vantrel::peer::PeerOptions::read(arguments);
    if (!options) {
        std::fputs("peer: a window is --window=TITLE,X,Y,WIDTH,HEIGHT\n", stderr);
        return 2;
    }
    if (options->ignoresTerminate) signal(SIGTERM, SIG_IGN);
    leaveArguments(executable, arguments);
    if (options->exitsAtOnce) return 0;

    const auto windows = vantrel::peer::PeerWindows::open();
    if (!windows) return 1;
    for (const auto& window : options->windows) windows->add(window, options->windowClass);
    while (!options->exitsWithoutWindows || !windows->empty()) {
        constexpr int milliseconds = 100;
        pollfd server{windows->descriptor(), POLLIN, 0};
        poll(&server, 1, milliseconds);
        if (!windows->takeEvents()) return 0;
        std::error_code error;
        if (getppid() != parent || !std::filesystem::exists(executable, error)) return 0;
    }
    return 0;
}
