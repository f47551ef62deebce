#pragma once

#include <dispatch/dispatch.h>

#include "platform/threads/DispatchGroup.h"

namespace vantrel::macos {

/// A dispatch_group_t. The system ends the process when a group dies with work under way, so whoever has entered it
/// holds it.
class MacDispatchGroup final : public DispatchGroup {
  public:
    MacDispatchGroup() : group_(dispatch_group_create()) {}

    void enter() override;
    void leave() override;
    /// The queue is one of this computer.
    void notify(DispatchQueue& queue, Block block) override;

  private:
    const dispatch_group_t group_;
};

}  // namespace vantrel::macos
