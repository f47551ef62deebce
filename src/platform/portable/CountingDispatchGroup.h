#pragma once

#include <cstddef>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/threads/DispatchGroup.h"

namespace vantrel {

/// A dispatch group made of a counter and the blocks that wait for it. Any thread. One leave() too many is a
/// programming error and ends the process, as on macOS.
class CountingDispatchGroup final : public DispatchGroup {
  public:
    void enter() override;
    void leave() override;
    /// The queue must outlive the group's work.
    void notify(DispatchQueue& queue, Block block) override;

  private:
    using Waiting = std::vector<std::pair<DispatchQueue*, Block>>;

    std::mutex mutex_;
    std::size_t entered_ = 0;
    Waiting waiting_;
};

}  // namespace vantrel
