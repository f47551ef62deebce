#include "tests/linux/x11/DummyDisplay.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <sstream>

namespace vantrel::linuxdesktop {

namespace {

constexpr const char* configuration = R"(Section "ServerFlags"
  Option "AutoAddDevices" "false"
  Option "AutoAddGPU" "false"
  Option "DontVTSwitch" "true"
EndSection
Section "Device"
  Identifier "device"
  Driver "dummy"
  VideoRam 256000
EndSection
Section "Monitor"
  Identifier "monitor"
  HorizSync 5-1000
  VertRefresh 5-200
  Modeline "1440x900" 106.50 1440 1528 1672 1904 900 903 909 934
EndSection
Section "Screen"
  Identifier "screen"
  Device "device"
  Monitor "monitor"
  DefaultDepth 24
  SubSection "Display"
    Depth 24
    Modes "1440x900"
    Virtual 4096 2048
  EndSubSection
EndSection
)";

// The server writes its display number there once it is ready.
constexpr int numberDescriptor = 3;
constexpr int startMilliseconds = 20000;

}  // namespace

DummyDisplay::DummyDisplay() {
    const std::string file = (folder_.path() / "xorg.conf").string();
    const std::string log = (folder_.path() / "log").string();
    std::ofstream(file) << configuration;
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return;
    server_ = fork();
    if (server_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        const int nothing = open("/dev/null", O_WRONLY);
        dup2(nothing, STDOUT_FILENO);
        dup2(nothing, STDERR_FILENO);
        if (ends[1] == numberDescriptor) fcntl(numberDescriptor, F_SETFD, 0);
        dup2(ends[1], numberDescriptor);
        execlp("Xorg", "Xorg", "-displayfd", "3", "-config", file.c_str(), "-logfile", log.c_str(), "-nolisten", "tcp",
               "-noreset", "-novtswitch", "-sharevts", nullptr);
        _exit(127);
    }
    close(ends[1]);
    // A number and a line feed, which may arrive separately.
    pollfd waited{ends[0], POLLIN, 0};
    std::string number;
    char character = 0;
    while (character != '\n' && poll(&waited, 1, startMilliseconds) == 1 && read(ends[0], &character, 1) == 1) {
        number += character;
    }
    if (character == '\n') name_ = ":" + number.substr(0, number.size() - 1);
    close(ends[0]);
}

DummyDisplay::~DummyDisplay() {
    if (server_ <= 0) return;
    kill(server_, SIGTERM);
    waitpid(server_, nullptr, 0);
}

std::string DummyDisplay::log() const {
    std::ostringstream text;
    text << std::ifstream(folder_.path() / "log").rdbuf();
    return text.str();
}

}  // namespace vantrel::linuxdesktop
