#include "platform/linux/guard/GuardProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace vantrel::linuxdesktop {

namespace {

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

    bool start(std::string executable, std::string client, std::string presence, pid_t& process) {
        const std::array<char*, 4> arguments{executable.data(), client.data(), presence.data(), nullptr};
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

std::unique_ptr<GuardProcess> GuardProcess::start(const std::string& executable, const FileDescriptor& presence) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) return nullptr;
    FileDescriptor own(ends[0]);
    FileDescriptor others(ends[1]);
    pid_t process = 0;
    const std::string client = std::to_string(getpid());
    const std::string pipe = std::to_string(presence.get());
    if (!GuardStart(others.get()).start(executable, client, pipe, process)) return nullptr;
    others.close();
    return std::unique_ptr<GuardProcess>(new GuardProcess(process, std::move(own)));
}

// SIGKILL loses nothing, and also ends a guard that was stopped.
GuardProcess::~GuardProcess() {
    kill(process_, SIGKILL);
    while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

bool GuardProcess::isThere() const {
    pollfd line{line_.get(), 0, 0};
    poll(&line, 1, 0);
    return (line.revents & (POLLHUP | POLLERR)) == 0;
}

void GuardProcess::sayThatTheMainThreadRuns() const {
    send({GuardMessage::Kind::mainThreadRuns, 0}, -1);
}

void GuardProcess::watchKeys(std::uint32_t resource, const FileDescriptor& line) const {
    send({GuardMessage::Kind::watchKeys, resource}, line.get());
}

void GuardProcess::send(const GuardMessage& message, int descriptor) const {
    GuardMessage copy = message;
    iovec bytes{&copy, sizeof copy};
    msghdr header{};
    header.msg_iov = &bytes;
    header.msg_iovlen = 1;
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof descriptor)> passed{};
    if (descriptor >= 0) {
        header.msg_control = passed.data();
        header.msg_controllen = passed.size();
        cmsghdr* control = CMSG_FIRSTHDR(&header);
        control->cmsg_level = SOL_SOCKET;
        control->cmsg_type = SCM_RIGHTS;
        control->cmsg_len = CMSG_LEN(sizeof descriptor);
        std::memcpy(CMSG_DATA(control), &descriptor, sizeof descriptor);
    }
    sendmsg(line_.get(), &header, MSG_NOSIGNAL | MSG_DONTWAIT);
}

}  // namespace vantrel::linuxdesktop
