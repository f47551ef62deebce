#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

#include "platform/threads/Block.h"
#include "platform/virtual/scheduler/Moment.h"

namespace vantrel::virtualmac {

/// Blocks in order of their moments, then of submission. Guarded by the scheduler's mutex.
class TimedQueue {
  public:
    void push(Moment joins, Block block) { blocks_.emplace(std::pair(joins, ++pushed_), std::move(block)); }

    /// The first block's moment, or `never` if there is none.
    Moment head() const { return blocks_.empty() ? never : blocks_.begin()->first.first; }

    /// Removes and returns the first block if its moment is not after `now`.
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
