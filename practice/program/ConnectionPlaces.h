#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>

namespace vantrel::practice {

/// Counts the connections, and knows which ones have not sent their request yet. Any thread. Callbacks run without the
/// lock.
class ConnectionPlaces {
  public:
    using End = std::function<void()>;

    explicit ConnectionPlaces(std::size_t places) : places_(places) {}

    /// Registers a new connection, which `end` would end. If there are too many, ends the one that has waited longest
    /// for its request.
    std::uint64_t begin(End end);
    /// The request has arrived or was refused: from now on the connection is not ended for another one.
    void requestHasCome(std::uint64_t connection);
    /// The connection is over. Returns whether a caller was told to wait and can stop waiting.
    bool over(std::uint64_t connection);

    /// False if no place is free and none can be made. `over` then reports when that has changed.
    bool mayAccept();
    /// Ends the connection that has waited longest for its request, if there is one.
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
