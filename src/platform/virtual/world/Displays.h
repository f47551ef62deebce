#pragma once

#include <cstddef>
#include <vector>

#include "platform/desktop/Screens.h"

namespace vantrel::virtualmac {

/// The connected displays, the primary one first.
struct Displays {
    std::vector<Screen> screens{{"Display integrato", {{0, 0}, {1440, 900}}}};
    /// The display with the keyboard focus.
    std::size_t main = 0;
    bool haveSeparateSpaces = true;
};

}  // namespace vantrel::virtualmac
