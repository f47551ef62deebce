#pragma once

#include <string_view>

#include "platform/ui/Window.h"

namespace vantrel {

/// The screen that says why a session ended. Main thread.
class EndScreen {
  public:
    static constexpr std::string_view viewId = "endView";
    static constexpr std::string_view endMessageLabel = "endMessageLabel";
    static constexpr std::string_view newSessionButton = "newSessionButton";

    /// Initially hidden.
    static View view(const Rect& frame);

    explicit EndScreen(Window& window) : window_(window) {}

    void setMessage(std::string_view message);
    void setHidden(bool hidden);

  private:
    Window& window_;
};

}  // namespace vantrel
