#pragma once

#include <cstdint>
#include <optional>

namespace vantrel::linuxdesktop {

class X11Connection;

/// The major opcode of the XInput extension. Empty if the server lacks version 2.1; from that version on, raw events
/// arrive even while another client has the keyboard. Asks the server.
std::optional<std::uint8_t> xInputExtension(const X11Connection& connection);

}  // namespace vantrel::linuxdesktop
