#include "platform/portable/UnreadLines.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
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

UnreadLines::~UnreadLines() {
    end();
}

void UnreadLines::write(std::string_view line) {
    const std::lock_guard lock(mutex_);
    if (gone_) return;
    std::string_view rest = line;
    if (kept_.empty()) {
        const Outlet::Taken taken = stream_.write(rest);
        gone_ = taken == Outlet::Taken::nothingAnyMore;
        if (taken != Outlet::Taken::aPart) return;
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
        const Outlet::Taken taken = stream_.write(rest);
        bytes_ -= before - rest.size();
        if (taken == Outlet::Taken::aPart) {
            kept_.front() = std::string(rest);
            lock.unlock();
            wait();
            lock.lock();
            continue;
        }
        kept_.pop_front();
        if (taken == Outlet::Taken::nothingAnyMore) {
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
    if (dropped_ == 0) return;
    const std::string text =
        "vantrel: " + std::to_string(dropped_) + " log lines were dropped: nobody read standard output\n";
    std::string_view rest = text;
    const bool isSaid = errors_.write(rest) == Outlet::Taken::everything || rest.size() < text.size();
    if (isSaid) dropped_ = 0;
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
    changed_.wait_for(lock, longestWaitAtTheEnd, [this] { return kept_.empty() || ended_; });
    // Another thread may have ended it meanwhile.
    if (ended_) return;
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
