#include "platform/linux/keyboard/KeyGuards.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>

namespace vantrel::linuxdesktop {

KeyGuards::KeyGuards(std::shared_ptr<Guards> guards, std::uint32_t resource)
    : guards_(std::move(guards)), resource_(resource) {
    for (std::size_t guard = 0; guard < all_.size(); ++guard) open(guard, 0);
}

bool KeyGuards::waitUntilReady() {
    constexpr std::chrono::seconds longest{5};
    const auto end = Clock::now() + longest;
    while (!anyWatches()) {
        std::array<pollfd, Guards::count> lines{};
        for (std::size_t guard = 0; guard < all_.size(); ++guard) lines[guard] = {descriptors()[guard], POLLIN, 0};
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0 || poll(lines.data(), lines.size(), static_cast<int>(left)) <= 0) return false;
        for (std::size_t guard = 0; guard < all_.size(); ++guard) attend(guard);
        const bool anyOpen =
            std::any_of(all_.begin(), all_.end(), [](const One& one) { return one.line.line.isOpen(); });
        if (!anyOpen) return false;
    }
    return true;
}

std::array<int, Guards::count> KeyGuards::descriptors() const {
    std::array<int, Guards::count> lines{};
    std::transform(all_.begin(), all_.end(), lines.begin(), [](const One& one) { return one.line.line.get(); });
    return lines;
}

std::optional<KeyGuards::Clock::time_point> KeyGuards::due() const {
    if (anyWatches()) return std::nullopt;
    std::optional<Clock::time_point> last;
    for (const One& one : all_) {
        if (one.line.line.isOpen() && (!last || one.asked + untilItWatches > *last)) last = one.asked + untilItWatches;
    }
    return last;
}

bool KeyGuards::attend(Clock::time_point now) {
    for (std::size_t guard = 0; guard < all_.size(); ++guard) attend(guard);
    if (anyWatches()) return true;
    return std::any_of(all_.begin(), all_.end(),
                       [now](const One& one) { return one.line.line.isOpen() && now < one.asked + untilItWatches; });
}

// A guard that ends before it ever watched is not started again: it would end again.
void KeyGuards::attend(std::size_t guard) {
    One& one = all_.at(guard);
    if (!one.line.line.isOpen()) return;
    std::array<char, 16> bytes{};
    const ssize_t count = recv(one.line.line.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count > 0) {
        one.watches = true;
        send(one.line.line.get(), &filterAnswer, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
    } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
        one.line.line.close();
        if (one.watches) open(guard, one.line.guard);
    }
}

void KeyGuards::open(std::size_t guard, pid_t failed) {
    all_.at(guard) = {guards_->keyLine(guard, resource_, failed), false, Clock::now()};
}

bool KeyGuards::anyWatches() const {
    return std::any_of(all_.begin(), all_.end(), [](const One& one) { return one.watches; });
}

}  // namespace vantrel::linuxdesktop
