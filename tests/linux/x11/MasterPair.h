#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <set>
#include <utility>

namespace vantrel::linuxdesktop {

/// A second keyboard with its own pointer, as long as the object exists. It shows that no code assumes a fixed keyboard
/// number. The connection must speak XInput 2.
class MasterPair {
  public:
    explicit MasterPair(xcb_connection_t* connection);
    ~MasterPair();
    MasterPair(const MasterPair&) = delete;
    MasterPair& operator=(const MasterPair&) = delete;

    /// Zero if the server created none.
    std::uint16_t keyboard() const { return keyboard_; }
    std::uint16_t pointer() const { return pointer_; }

  private:
    std::set<std::pair<std::uint16_t, std::uint16_t>> masters();

    xcb_connection_t* connection_;
    std::uint16_t keyboard_ = 0;
    std::uint16_t pointer_ = 0;
};

}  // namespace vantrel::linuxdesktop
