#include "practice/program/ConnectionPlaces.h"

#include <utility>

namespace vantrel::practice {

std::uint64_t ConnectionPlaces::begin(End end) {
    bool isOneTooMany = false;
    {
        const std::lock_guard lock(mutex_);
        isOneTooMany = ++count_ > places_;
    }
    if (isOneTooMany) makePlace();
    const std::lock_guard lock(mutex_);
    awaited_.emplace(next_, std::move(end));
    return next_++;
}

void ConnectionPlaces::requestHasCome(std::uint64_t connection) {
    const std::lock_guard lock(mutex_);
    awaited_.erase(connection);
}

bool ConnectionPlaces::over(std::uint64_t connection) {
    const std::lock_guard lock(mutex_);
    awaited_.erase(connection);
    --count_;
    if (!isSomebodyWaiting_ || count_ >= places_) return false;
    isSomebodyWaiting_ = false;
    return true;
}

bool ConnectionPlaces::mayAccept() {
    const std::lock_guard lock(mutex_);
    isSomebodyWaiting_ = count_ >= places_ && awaited_.empty();
    return !isSomebodyWaiting_;
}

void ConnectionPlaces::makePlace() {
    End end;
    {
        const std::lock_guard lock(mutex_);
        if (awaited_.empty()) return;
        end = std::move(awaited_.begin()->second);
        awaited_.erase(awaited_.begin());
    }
    end();
}

}  // namespace vantrel::practice
