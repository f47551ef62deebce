#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <set>
#include <utility>

namespace vantrel::linuxdesktop {

/// A second keyboard with a pointer of its own, for as long as the object is there: what the keyboard's number is may
/// not be taken for granted. The connection has to speak XInput 2.
class MasterPair {
  public:
    explicit MasterPair(xcb_connection_t* connection);
    ~MasterPair();
    MasterPair(const MasterPair&) = delete;
    MasterPair& operator=(const MasterPair&) = delete;

    /// Zero when the server made none.
    std::uint16_t keyboard() const { return keyboard_; }
    std::uint16_t pointer() const { return pointer_; }

  private:
    std::set<std::pair<std::uint16_t, std::uint16_t>> masters();

    xcb_connection_t* connection_;
    std::uint16_t keyboard_ = 0;
    std::uint16_t pointer_ = 0;
};

}  // namespace vantrel::linuxdesktop
