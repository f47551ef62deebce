#pragma once

#include "platform/threads/Block.h"
#include "platform/threads/DispatchQueue.h"

namespace vantrel {

/// Counts pieces of work under way (dispatch_group_t). Any thread; every enter() is matched by one leave().
class DispatchGroup {
  public:
    virtual ~DispatchGroup() = default;

    virtual void enter() = 0;
    virtual void leave() = 0;

    /// dispatch_group_notify: submits the block to `queue` once, when the group is empty; at once if it already is.
    virtual void notify(DispatchQueue& queue, Block block) = 0;
};

}  // namespace vantrel
