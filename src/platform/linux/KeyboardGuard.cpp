#include "platform/linux/KeyboardGuard.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace vantrel::linuxdesktop {

namespace {

// A group of its own: what stops the client from its terminal does not stop the guard.
class GuardProcess {
  public:
    explicit GuardProcess(int line) {
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
    ~GuardProcess() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&files_);
    }
    GuardProcess(const GuardProcess&) = delete;
    GuardProcess& operator=(const GuardProcess&) = delete;

    bool start(std::string executable, std::string resource, pid_t& process) {
        const std::array<char*, 3> arguments{executable.data(), resource.data(), nullptr};
        return posix_spawn(&process, executable.c_str(), &files_, &attributes_, arguments.data(), environ) == 0;
    }

  private:
    posix_spawn_file_actions_t files_;
    posix_spawnattr_t attributes_;
};

}  // namespace

std::string KeyboardGuard::standardExecutable() {
    std::error_code error;
    const auto own = std::filesystem::read_symlink("/proc/self/exe", error);
    return (own.parent_path() / "vantrel-keyboard-guard").string();
}

std::unique_ptr<KeyboardGuard> KeyboardGuard::start(const std::string& executable, std::uint32_t resource) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return nullptr;
    FileDescriptor own(ends[0]);
    FileDescriptor others(ends[1]);
    pid_t process = 0;
    if (!GuardProcess(others.get()).start(executable, std::to_string(resource), process)) return nullptr;
    others.close();
    std::unique_ptr<KeyboardGuard> guard(new KeyboardGuard(process, std::move(own)));
    if (!guard->waitUntilReady()) return nullptr;
    return guard;
}

bool KeyboardGuard::waitUntilReady() {
    constexpr int milliseconds = 5000;
    pollfd line{descriptor(), POLLIN, 0};
    char ready = 0;
    return poll(&line, 1, milliseconds) == 1 && recv(descriptor(), &ready, 1, MSG_DONTWAIT) == 1;
}

// Nothing is lost with it, and a guard that was stopped goes all the same.
KeyboardGuard::~KeyboardGuard() {
    kill(process_, SIGKILL);
    while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

bool KeyboardGuard::answer() {
    std::array<char, 16> questions{};
    const ssize_t count = recv(descriptor(), questions.data(), questions.size(), MSG_DONTWAIT);
    if (count < 0) return errno == EAGAIN || errno == EINTR;
    if (count == 0) return false;
    const char here = '!';
    return send(descriptor(), &here, 1, MSG_NOSIGNAL | MSG_DONTWAIT) == 1;
}

}  // namespace vantrel::linuxdesktop
