#include "platform/portable/UnreadLines.h"

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <system_error>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

constexpr std::size_t mostBytes = 4 << 20;
constexpr auto longestWaitAtTheEnd = std::chrono::seconds(1);

// Those with a thread.
struct All {
    std::mutex mutex;
    std::vector<std::weak_ptr<UnreadLines>> lines;
};

All& all() {
    static All instance;
    return instance;
}

}  // namespace

Outlet::Outlet(int descriptor) : descriptor_(descriptor) {
    std::array<char, PATH_MAX> name{};
    if (isatty(descriptor) != 1 || ttyname_r(descriptor, name.data(), name.size()) != 0) return;
    terminal_ = open(name.data(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

Outlet::~Outlet() {
    if (terminal_ >= 0) close(terminal_);
}

bool Outlet::takesAPiece() const {
    pollfd state{get(), POLLOUT, 0};
    return poll(&state, 1, 0) > 0;
}

UnreadLines::~UnreadLines() {
    end();
}

// A pipe that takes anything takes PIPE_BUF bytes without waiting.
UnreadLines::Stream UnreadLines::writeNow(std::string_view& rest) const {
    while (!rest.empty()) {
        if (!stream_.takesAPiece()) return Stream::waits;
        const ssize_t written = ::write(stream_.get(), rest.data(), std::min<std::size_t>(rest.size(), PIPE_BUF));
        if (written >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            return Stream::waits;
        } else if (errno != EINTR) {
            return Stream::gone;
        }
    }
    return Stream::takes;
}

void UnreadLines::write(std::string_view line) {
    const std::lock_guard lock(mutex_);
    if (gone_) return;
    std::string_view rest = line;
    if (kept_.empty()) {
        const Stream stream = writeNow(rest);
        gone_ = stream == Stream::gone;
        if (stream != Stream::waits) return;
    }
    // The rest of a line that has begun is kept in any case: the next line must not continue it.
    const bool fits = rest.size() < line.size() || bytes_ + rest.size() <= mostBytes;
    if (!fits || !startThread()) {
        ++dropped_;
        return;
    }
    kept_.emplace_back(rest);
    bytes_ += rest.size();
    changed_.notify_all();
}

bool UnreadLines::startThread() {
    if (ended_) return false;
    if (thread_.joinable()) return true;
    if (pipe(wake_.data()) != 0) return false;
    for (const int end : wake_) fcntl(end, F_SETFD, FD_CLOEXEC);
    try {
        thread_ = std::thread([this] { run(); });
    } catch (const std::system_error&) {
        for (int& end : wake_) close(std::exchange(end, -1));
        return false;
    }
    const std::lock_guard lock(all().mutex);
    if (all().lines.empty()) std::atexit(&UnreadLines::endAll);
    all().lines.push_back(weak_from_this());
    return true;
}

void UnreadLines::run() {
    std::unique_lock lock(mutex_);
    while (!ended_) {
        if (kept_.empty()) {
            reportDropped();
            changed_.wait(lock);
            continue;
        }
        std::string_view rest = kept_.front();
        const std::size_t before = rest.size();
        const Stream stream = writeNow(rest);
        bytes_ -= before - rest.size();
        if (stream == Stream::waits) {
            kept_.front() = std::string(rest);
            lock.unlock();
            wait();
            lock.lock();
            continue;
        }
        kept_.pop_front();
        if (stream == Stream::gone) {
            gone_ = true;
            kept_.clear();
            bytes_ = 0;
        }
        changed_.notify_all();
    }
}

void UnreadLines::wait() const {
    constexpr int forEver = -1;
    std::array<pollfd, 2> states{pollfd{stream_.get(), POLLOUT, 0}, pollfd{wake_[0], POLLIN, 0}};
    poll(states.data(), states.size(), forEver);
}

void UnreadLines::reportDropped() {
    if (dropped_ == 0 || !errors_.takesAPiece()) return;
    const std::string text = "vantrel: " + std::to_string(std::exchange(dropped_, 0)) +
                             " log lines were dropped: nobody read standard output\n";
    [[maybe_unused]] const ssize_t written = ::write(errors_.get(), text.data(), text.size());
}

void UnreadLines::endAll() {
    std::vector<std::weak_ptr<UnreadLines>> lines;
    {
        const std::lock_guard lock(all().mutex);
        lines.swap(all().lines);
    }
    for (const auto& one : lines) {
        if (const auto living = one.lock()) living->end();
    }
}

void UnreadLines::end() {
    std::unique_lock lock(mutex_);
    if (ended_) return;
    changed_.wait_for(lock, longestWaitAtTheEnd, [this] { return kept_.empty(); });
    ended_ = true;
    dropped_ += kept_.size();
    reportDropped();
    changed_.notify_all();
    if (!thread_.joinable()) return;
    [[maybe_unused]] const ssize_t woken = ::write(wake_[1], "", 1);
    lock.unlock();
    thread_.join();
    for (const int end : wake_) close(end);
}

}  // namespace vantrel
