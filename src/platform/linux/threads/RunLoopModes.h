#pragma once

#include <memory>

#include "platform/threads/Block.h"

namespace vantrel::linuxdesktop {

/// What the main run loop is busy with. It is in its default mode unless a modal alert is up or a menu is tracked.
/// Menus here do not nest their loops as alerts do, so the stays may end in any order. Main thread.
class RunLoopModes {
  public:
    /// Keeps the loop out of its default mode for as long as it lives.
    class Stay {
      public:
        explicit Stay(RunLoopModes& modes);
        ~Stay();
        Stay(const Stay&) = delete;
        Stay& operator=(const Stay&) = delete;

      private:
        RunLoopModes& modes_;
    };

    bool isDefault() const { return stays_ == 0; }

    /// Called whenever the loop comes back to its default mode.
    void setOnDefault(Block block);

  private:
    int stays_ = 0;
    Block onDefault_;
};

}  // namespace vantrel::linuxdesktop
