#include "tests/linux/support/DesktopStage.h"

#include <thread>

namespace vantrel::linuxdesktop {

DesktopStage& DesktopStage::shared() {
    static DesktopStage stage;
    return stage;
}

int DesktopStage::serve(const std::function<int()>& tests) {
    int result = 1;
    std::thread thread([&] {
        result = tests();
        const std::lock_guard lock(mutex_);
        state_ = State::ended;
        changed_.notify_all();
    });
    {
        std::unique_lock lock(mutex_);
        while (state_ != State::ended) {
            changed_.wait(lock, [this] { return state_ == State::raising || state_ == State::ended; });
            if (state_ == State::raising) runDesktop(lock);
        }
    }
    thread.join();
    return result;
}

void DesktopStage::runDesktop(std::unique_lock<std::mutex>& lock) {
    lock.unlock();
    NoComputer reason{};
    auto desktop = LinuxComputer::create({}, reason);
    lock.lock();
    if (!desktop) {
        state_ = State::idle;
        changed_.notify_all();
        return;
    }
    desktop_ = std::move(desktop);
    state_ = State::running;
    changed_.notify_all();
    lock.unlock();
    desktop_->computer().application.run();
    desktop_.reset();
    lock.lock();
    state_ = State::idle;
    changed_.notify_all();
}

LinuxComputer* DesktopStage::raise() {
    std::unique_lock lock(mutex_);
    state_ = State::raising;
    changed_.notify_all();
    changed_.wait(lock, [this] { return state_ != State::raising; });
    return desktop_.get();
}

void DesktopStage::lower() {
    std::unique_lock lock(mutex_);
    if (state_ != State::running) return;
    desktop_->postEvent([this] { desktop_->computer().application.terminate(); });
    changed_.wait(lock, [this] { return state_ != State::running; });
}

}  // namespace vantrel::linuxdesktop
