#include "platform/linux/guard/GuardProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace vantrel::linuxdesktop {

namespace {

// The messages of both ends.
constexpr char question = '?';
constexpr char answer = '!';

// Its own process group: what stops the client from its terminal does not stop the guard.
class GuardStart {
  public:
    explicit GuardStart(int line) {
        posix_spawn_file_actions_init(&files_);
        posix_spawn_file_actions_adddup2(&files_, line, STDIN_FILENO);
        posix_spawn_file_actions_addopen(&files_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&files_, STDERR_FILENO + 1);
        posix_spawnattr_init(&attributes_);
        sigset_t everySignal;
        sigset_t noSignal;
        sigfillset(&everySignal);
        sigemptyset(&noSignal);
        posix_spawnattr_setsigdefault(&attributes_, &everySignal);
        posix_spawnattr_setsigmask(&attributes_, &noSignal);
        posix_spawnattr_setpgroup(&attributes_, 0);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
    }
    ~GuardStart() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&files_);
    }
    GuardStart(const GuardStart&) = delete;
    GuardStart& operator=(const GuardStart&) = delete;

    bool start(std::string executable, std::string resource, pid_t& process) {
        const std::array<char*, 3> arguments{executable.data(), resource.data(), nullptr};
        return posix_spawn(&process, executable.c_str(), &files_, &attributes_, arguments.data(), environ) == 0;
    }

  private:
    posix_spawn_file_actions_t files_;
    posix_spawnattr_t attributes_;
};

}  // namespace

std::string GuardProcess::standardExecutable() {
    std::error_code error;
    const auto own = std::filesystem::read_symlink("/proc/self/exe", error);
    return (own.parent_path() / "vantrel-guard").string();
}

std::unique_ptr<GuardProcess> GuardProcess::start(const std::string& executable, std::uint32_t resource) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return nullptr;
    FileDescriptor own(ends[0]);
    FileDescriptor others(ends[1]);
    pid_t process = 0;
    if (!GuardStart(others.get()).start(executable, std::to_string(resource), process)) return nullptr;
    others.close();
    return std::unique_ptr<GuardProcess>(new GuardProcess(process, std::move(own)));
}

bool GuardProcess::waitUntilReady() {
    constexpr int milliseconds = 5000;
    pollfd line{descriptor(), POLLIN, 0};
    return poll(&line, 1, milliseconds) == 1 && attend(Clock::now()) && hasWatched_;
}

// SIGKILL loses nothing, and also ends a guard that was stopped.
GuardProcess::~GuardProcess() {
    kill(process_, SIGKILL);
    while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

std::optional<GuardProcess::Clock::time_point> GuardProcess::due() const {
    if (asked_) return *asked_ + forAnswer;
    if (pressed_) return *pressed_ + beforeQuestion;
    return std::nullopt;
}

void GuardProcess::keyWasPressed(Clock::time_point now) {
    if (!pressed_) pressed_ = now;
}

// Read the line before the clock: what the guard said while this thread did not run still counts.
bool GuardProcess::attend(Clock::time_point now) {
    std::array<char, 16> bytes{};
    const ssize_t count = recv(descriptor(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) return false;
    if (count > 0) {
        hasWatched_ = true;
        pressed_.reset();
        asked_.reset();
        const auto end = bytes.begin() + count;
        return std::find(bytes.begin(), end, question) == end || send(answer);
    }
    if (asked_) return now < *asked_ + forAnswer;
    if (!pressed_ || now < *pressed_ + beforeQuestion) return true;
    asked_ = now;
    return send(question);
}

bool GuardProcess::send(char byte) const {
    return ::send(descriptor(), &byte, 1, MSG_NOSIGNAL | MSG_DONTWAIT) == 1;
}

}  // namespace vantrel::linuxdesktop
