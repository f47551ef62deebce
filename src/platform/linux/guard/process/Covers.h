#pragma once

#include <cstdint>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// The windows with which a client covers displays. One thread at a time.
class Covers {
  public:
    Covers(X11Connection& connection, std::uint32_t client) : connection_(connection), client_(client) {}

    /// Takes them off the screen. A client that goes on shows them again the next time that it raises them.
    void hide();

  private:
    X11Connection& connection_;
    const std::uint32_t client_;
};

}  // namespace vantrel::linuxdesktop
