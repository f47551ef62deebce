#pragma once

#include "platform/threads/Block.h"

namespace vantrel {

/// A queue of blocks (dispatch_queue_t). Both operations may be called from any thread and return at once.
///
/// The main queue runs its blocks one at a time on the main thread, first in, first out. It is not re-entrant: while
/// one of its blocks shows a modal alert, it runs no other block until the alert is dismissed. Under an alert that was
/// opened from an event (a menu, a button) it continues. The global queue runs blocks on threads of its choice, several
/// at once.
class DispatchQueue {
  public:
    virtual ~DispatchQueue() = default;

    /// dispatch_async.
    virtual void async(Block block) = 0;

    /// dispatch_after: the block joins the queue `seconds` of uptime from now.
    virtual void asyncAfter(double seconds, Block block) = 0;
};

}  // namespace vantrel
