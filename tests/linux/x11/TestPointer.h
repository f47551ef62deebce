#pragma once

#include <cstdint>
#include <memory>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// Moves the pointer and clicks as a person would, through the server's test extension. In pixels of the root window.
/// Returns once the server has received it.
class TestPointer {
  public:
    TestPointer();

    void moveTo(int x, int y);
    /// A button as X11 numbers them: left, middle, right.
    void click(std::uint8_t button = XCB_BUTTON_INDEX_1);
    void clickAt(int x, int y);

  private:
    void send(std::uint8_t type, std::uint8_t button, int x, int y);

    const std::unique_ptr<X11Connection> connection_;
};

}  // namespace vantrel::linuxdesktop
