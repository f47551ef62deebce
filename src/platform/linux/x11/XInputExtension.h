#pragma once

#include <cstdint>
#include <optional>

namespace vantrel::linuxdesktop {

class X11Connection;

/// The major opcode of the XInput extension; empty where the server has none of version 2.1, from which on raw events
/// come also while another client has the keyboard. Asks the server.
std::optional<std::uint8_t> xInputExtension(const X11Connection& connection);

}  // namespace vantrel::linuxdesktop
