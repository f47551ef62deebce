#pragma once

#include <memory>

#include "platform/threads/Block.h"
#include "platform/threads/Observation.h"

namespace vantrel {

/// Changes of the active Space. Main thread.
class Spaces {
  public:
    virtual ~Spaces() = default;

    /// NSWorkspaceActiveSpaceDidChangeNotification on the main operation queue. It comes at the start of the change,
    /// when window flags may still show the old state.
    [[nodiscard]] virtual std::unique_ptr<Observation> observeActiveSpaceDidChange(Block block) = 0;
};

}  // namespace vantrel
