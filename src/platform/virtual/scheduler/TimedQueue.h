#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

#include "platform/threads/Block.h"
#include "platform/virtual/scheduler/Moment.h"

namespace vantrel::virtualmac {

/// Blocks in the order in which they join: by moment, then by when they were handed in. Guarded by the scheduler's
/// mutex.
class TimedQueue {
  public:
    void push(Moment joins, Block block) { blocks_.emplace(std::pair(joins, ++pushed_), std::move(block)); }

    /// The moment at which the first block joins; `never` when there is none.
    Moment head() const { return blocks_.empty() ? never : blocks_.begin()->first.first; }

    /// Takes the first block out if it has joined by `now`.
    std::optional<Block> take(Moment now) {
        if (head() > now || blocks_.empty()) return std::nullopt;
        return std::move(blocks_.extract(blocks_.begin()).mapped());
    }

    std::size_t size() const { return blocks_.size(); }

  private:
    std::map<std::pair<Moment, std::uint64_t>, Block> blocks_;
    std::uint64_t pushed_ = 0;
};

}  // namespace vantrel::virtualmac
