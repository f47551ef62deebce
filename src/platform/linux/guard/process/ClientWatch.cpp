#include "platform/linux/guard/process/ClientWatch.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <vector>

#include "platform/linux/desktop/FullScreenDesktops.h"
#include "platform/linux/guard/GuardMessage.h"
#include "platform/linux/x11/X11WindowSurvey.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

namespace {

using Clock = std::chrono::steady_clock;

// A guard comes back after betweenLooks at the latest, unless it has to wait for the X server, which another client can
// keep for itself for seconds.
constexpr std::chrono::milliseconds ordinarily{1500};
constexpr std::chrono::seconds waitingForServer{30};

enum class Heard { nothing, message, end };

// A descriptor that came with the message is left in `passed`.
Heard receive(int line, GuardMessage& message, FileDescriptor& passed) {
    iovec bytes{&message, sizeof message};
    msghdr header{};
    header.msg_iov = &bytes;
    header.msg_iovlen = 1;
    int descriptor = -1;
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof descriptor)> control{};
    header.msg_control = control.data();
    header.msg_controllen = control.size();
    const ssize_t count = recvmsg(line, &header, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return Heard::nothing;
    if (count != sizeof message) return Heard::end;
    const cmsghdr* first = CMSG_FIRSTHDR(&header);
    if (first != nullptr && first->cmsg_type == SCM_RIGHTS) {
        std::memcpy(&descriptor, CMSG_DATA(first), sizeof descriptor);
    }
    passed = FileDescriptor(descriptor);
    return Heard::message;
}

void waitForEnd(pid_t process) {
    const FileDescriptor end(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
    if (!end.isOpen()) return;
    constexpr int longest = 5000;
    pollfd source{end.get(), POLLIN, 0};
    poll(&source, 1, longest);
}

}  // namespace

std::unique_ptr<ClientWatch> ClientWatch::create(pid_t client, FileDescriptor line) {
    // Before anything that may wait.
    auto deadline = KernelDeadline::create();
    if (deadline) deadline->comeBackWithin(waitingForServer);
    auto connection = X11Connection::open();
    if (!connection) return nullptr;
    std::unique_ptr<ClientWatch> watch(
        new ClientWatch(std::move(deadline), std::move(connection), client, std::move(line)));
    watch->keys_ = KeyWatch::create(*watch->connection_, client, [own = watch.get()] { own->expectToWait(); });
    return watch->keys_ ? std::move(watch) : nullptr;
}

ClientWatch::ClientWatch(std::unique_ptr<KernelDeadline> deadline, std::unique_ptr<X11Connection> connection,
                         pid_t client, FileDescriptor line)
    : deadline_(std::move(deadline)),
      connection_(std::move(connection)),
      client_(client),
      state_(client),
      line_(std::move(line)),
      covers_(*connection_, static_cast<std::uint32_t>(client)),
      nextLook_(Clock::now() + betweenLooks),
      mainThreadRan_(Clock::now()) {}

void ClientWatch::run() {
    while (connection_->isAlive()) {
        if (deadline_) deadline_->comeBackWithin(ordinarily);
        wait();
        if (!listen()) return putDesktopsBack();
        keys_->attend();
        if (const Time now = Clock::now(); now >= nextLook_) look(now);
    }
}

void ClientWatch::wait() {
    std::vector<pollfd> sources{{line_.get(), POLLIN, 0}, {xcb_get_file_descriptor(connection_->get()), POLLIN, 0}};
    for (const int line : keys_->descriptors()) sources.push_back({line, POLLIN, 0});
    const Time due = std::min(nextLook_, keys_->due().value_or(nextLook_));
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(due - Clock::now()).count();
    poll(sources.data(), sources.size(), static_cast<int>(std::max<decltype(left)>(left, 0)));
}

// False once the client is gone.
bool ClientWatch::listen() {
    for (;;) {
        GuardMessage message;
        FileDescriptor passed;
        const Heard heard = receive(line_.get(), message, passed);
        if (heard == Heard::nothing) return true;
        if (heard == Heard::end) return false;
        if (message.kind == GuardMessage::Kind::mainThreadRuns) hearThatTheMainThreadRuns();
        if (message.kind == GuardMessage::Kind::watchKeys) keys_->add(std::move(passed), message.resource);
    }
}

// As good as a look: the client was not stopped.
void ClientWatch::hearThatTheMainThreadRuns() {
    mainThreadRan_ = Clock::now();
    nextLook_ = mainThreadRan_ + betweenLooks;
    wasStopped_ = false;
}

void ClientWatch::look(Time now) {
    nextLook_ = now + betweenLooks;
    const bool stopped = state_.isStopped();
    if (stopped || now - mainThreadRan_ >= mainThreadPatience) {
        expectToWait();
        covers_.hide();
    }
    if (stopped && wasStopped_) keys_->freeKeyboard();
    wasStopped_ = stopped;
}

void ClientWatch::expectToWait() {
    if (deadline_) deadline_->comeBackWithin(waitingForServer);
}

// A record of a client that has ended is taken over, by one guard only, and everything in it undone.
void ClientWatch::putDesktopsBack() {
    expectToWait();
    waitForEnd(client_);
    X11Windows windows(*connection_);
    X11WindowSurvey survey(*connection_, windows);
    const FullScreenDesktops left({*connection_, windows, survey, [](xcb_window_t) {}, [] { return nullptr; }});
}

}  // namespace vantrel::linuxdesktop
