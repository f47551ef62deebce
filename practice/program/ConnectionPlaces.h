#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>

namespace vantrel::practice {

/// Counts the connections, and knows which of them still owe their request. Any thread; what is called from here is
/// called without the lock.
class ConnectionPlaces {
  public:
    using End = std::function<void()>;

    explicit ConnectionPlaces(std::size_t places) : places_(places) {}

    /// A connection that has begun, which `end` would end. Where it is one too many, the one whose request has been
    /// awaited longest is ended for it.
    std::uint64_t begin(End end);
    /// Its request has come in, or is refused: it is not ended for another any more.
    void requestHasCome(std::uint64_t connection);
    /// It is over. Returns whether somebody was told to wait and need wait no longer.
    bool over(std::uint64_t connection);

    /// False when no place is left and none can be made. Then `over` tells when that has changed.
    bool mayAccept();
    /// Ends the connection whose request has been awaited longest, if there is one.
    void makePlace();

  private:
    const std::size_t places_;
    std::mutex mutex_;
    std::size_t count_ = 0;
    std::uint64_t next_ = 1;
    bool isSomebodyWaiting_ = false;
    /// The oldest first.
    std::map<std::uint64_t, End> awaited_;
};

}  // namespace vantrel::practice
