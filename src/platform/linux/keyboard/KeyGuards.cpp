#include "platform/linux/keyboard/KeyGuards.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/guard/GuardMessage.h"

namespace vantrel::linuxdesktop {

KeyGuards::KeyGuards(std::shared_ptr<Guards> guards, std::uint32_t resource)
    : guards_(std::move(guards)), resource_(resource) {
    for (std::size_t guard = 0; guard < all_.size(); ++guard) open(guard);
}

bool KeyGuards::waitUntilReady() {
    constexpr std::chrono::seconds longest{5};
    const auto end = Clock::now() + longest;
    while (!anyWatches()) {
        std::array<pollfd, Guards::count> lines{};
        for (std::size_t guard = 0; guard < all_.size(); ++guard) lines[guard] = {descriptors()[guard], POLLIN, 0};
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0 || !anyIsOpen()) return false;
        poll(lines.data(), lines.size(), static_cast<int>(left));
        for (std::size_t guard = 0; guard < all_.size(); ++guard) attend(guard, Clock::now());
    }
    return true;
}

std::array<int, Guards::count> KeyGuards::descriptors() const {
    std::array<int, Guards::count> lines{};
    std::transform(all_.begin(), all_.end(), lines.begin(), [](const One& one) { return one.line.line.get(); });
    return lines;
}

std::optional<KeyGuards::Clock::time_point> KeyGuards::due() const {
    std::optional<Clock::time_point> first;
    if (unwatchedSince_) first = *unwatchedSince_ + withoutAny;
    for (const One& one : all_) {
        const auto nextTry = one.asked + untilTheNextTry;
        if (!one.watches && (!first || nextTry < *first)) first = nextTry;
    }
    return first;
}

bool KeyGuards::attend(Clock::time_point now) {
    for (std::size_t guard = 0; guard < all_.size(); ++guard) attend(guard, now);
    if (anyWatches()) {
        unwatchedSince_.reset();
        return true;
    }
    if (!unwatchedSince_) unwatchedSince_ = now;
    return now < *unwatchedSince_ + withoutAny;
}

// One that ends before it ever watched is not replaced at once: it would end again. But it is replaced. A guard that
// runs and watches no key would keep the kernel from helping a client that is stopped.
void KeyGuards::attend(std::size_t guard, Clock::time_point now) {
    One& one = all_.at(guard);
    if (!one.watches && now >= one.asked + untilTheNextTry) open(guard);
    if (!one.line.line.isOpen()) return;
    std::array<char, 16> bytes{};
    const ssize_t count = recv(one.line.line.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count > 0) {
        one.watches = true;
        takenBecause(std::string_view(bytes.data(), static_cast<std::size_t>(count)));
        send(one.line.line.get(), &filterAnswer, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
    } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
        one.line.line.close();
        if (std::exchange(one.watches, false)) open(guard);
    }
}

void KeyGuards::takenBecause(std::string_view bytes) {
    for (const char byte : bytes) {
        if (byte == keyboardOfAStoppedClient) taken_ = Taken::clientStopped;
        if (byte == keyboardOfASilentFilter) taken_ = Taken::filterSilent;
    }
}

void KeyGuards::open(std::size_t guard) {
    const auto& last = all_.at(guard).line.guard;
    const pid_t failed = last ? last->load() : 0;
    all_.at(guard) = {guards_->keyLine(guard, resource_, failed), false, Clock::now()};
}

bool KeyGuards::anyIsOpen() const {
    return std::any_of(all_.begin(), all_.end(), [](const One& one) { return one.line.line.isOpen(); });
}

bool KeyGuards::anyWatches() const {
    return std::any_of(all_.begin(), all_.end(), [](const One& one) { return one.watches; });
}

}  // namespace vantrel::linuxdesktop
