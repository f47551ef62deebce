#pragma once

#include <memory>

#include "platform/threads/Block.h"

namespace vantrel::linuxdesktop {

/// The mode of the main run loop. It is the default mode unless a modal alert is shown or a menu is tracked. Menus do
/// not nest their loops as alerts do, so stays may end in any order. Main thread.
class RunLoopModes {
  public:
    /// Keeps the loop out of its default mode as long as it lives.
    class Stay {
      public:
        explicit Stay(RunLoopModes& modes);
        ~Stay();
        Stay(const Stay&) = delete;
        Stay& operator=(const Stay&) = delete;

      private:
        RunLoopModes& modes_;
    };

    bool isDefault() const { return staysDefault_ || stays_ == 0; }

    /// From now on the loop is in its default mode, whatever is shown.
    void stayDefault();

    /// Called whenever the loop returns to its default mode.
    void setOnDefault(Block block);

  private:
    int stays_ = 0;
    bool staysDefault_ = false;
    Block onDefault_;
};

}  // namespace vantrel::linuxdesktop
