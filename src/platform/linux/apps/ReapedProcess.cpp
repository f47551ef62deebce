#include "platform/linux/apps/ReapedProcess.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>

#include "platform/linux/apps/ProcFile.h"
#include "platform/linux/apps/ProcessTable.h"
#include "platform/linux/system/OwnEnvironment.h"

namespace vantrel::linuxdesktop {

namespace {

class Attributes {
  public:
    Attributes() {
        posix_spawnattr_init(&value_);
        sigset_t everySignal;
        sigset_t noSignal;
        sigfillset(&everySignal);
        sigemptyset(&noSignal);
        posix_spawnattr_setsigdefault(&value_, &everySignal);
        posix_spawnattr_setsigmask(&value_, &noSignal);
        posix_spawnattr_setpgroup(&value_, 0);
        posix_spawnattr_setflags(&value_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
    }
    ~Attributes() { posix_spawnattr_destroy(&value_); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    const posix_spawnattr_t* get() const { return &value_; }

  private:
    posix_spawnattr_t value_;
};

// Closes also what a library or the client's parent opened without the close-on-exec flag.
class StandardStreamsOnly {
  public:
    StandardStreamsOnly() {
        posix_spawn_file_actions_init(&value_);
        posix_spawn_file_actions_addclosefrom_np(&value_, STDERR_FILENO + 1);
    }
    ~StandardStreamsOnly() { posix_spawn_file_actions_destroy(&value_); }
    StandardStreamsOnly(const StandardStreamsOnly&) = delete;
    StandardStreamsOnly& operator=(const StandardStreamsOnly&) = delete;

    const posix_spawn_file_actions_t* get() const { return &value_; }

  private:
    posix_spawn_file_actions_t value_;
};

// A child that nobody waits for stays a zombie as long as the client runs.
void reapLater(pid_t child) {
    try {
        std::thread([child] {
            while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
            }
        }).detach();
    } catch (const std::system_error&) {  // NOLINT(bugprone-empty-catch)
        // No thread is available. The zombie stays, but counts as gone.
    }
}

// The kernel lets the starting thread continue a moment before the new program's arguments and environment can be read
// in /proc. ProcessTable needs them to recognise it.
void waitUntilReadable(pid_t child) {
    constexpr int mostTurns = 1000;
    const std::string file = "/proc/" + std::to_string(child) + "/cmdline";
    for (int turn = 0; turn < mostTurns && readProcFile(file).empty() && ProcessTable::startTime(child); ++turn) {
        std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
}

// The texts as the system takes them, with a null pointer at the end.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

bool holdsZero(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

}  // namespace

StartedProcess startReaped(const std::string& executable, const std::vector<std::string>& arguments,
                           ExecutableLookup lookup) {
    // The kernel would cut the texts off there.
    if (holdsZero(executable) || std::any_of(arguments.begin(), arguments.end(), holdsZero)) {
        return {0, EINVAL};
    }

    std::vector<std::string> copies = arguments;
    std::vector<std::string> environment = OwnEnvironment::ofOthers();
    const auto argumentPointers = pointersTo(copies);
    const auto environmentPointers = pointersTo(environment);

    const Attributes attributes;
    const StandardStreamsOnly files;
    const auto spawn = lookup == ExecutableLookup::alongPath ? posix_spawnp : posix_spawn;
    StartedProcess started;
    started.error = spawn(&started.process, executable.c_str(), files.get(), attributes.get(), argumentPointers.data(),
                          environmentPointers.data());
    if (started.error != 0) return {0, started.error};
    waitUntilReadable(started.process);
    reapLater(started.process);
    return started;
}

}  // namespace vantrel::linuxdesktop
