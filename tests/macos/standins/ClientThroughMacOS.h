#pragma once

#include <functional>

#include "platform/Computer.h"
#include "platform/virtual/VirtualMac.h"

namespace vantrel::standins {

/// The client through the Mac's own code: main(), rules, platform headers, src/platform/macos, stand-ins, virtual Mac.
/// For a player of scenarios; it lives until nothing of the client runs any more.
std::function<void(const Computer&)> clientThroughMacOS(virtualmac::VirtualMac& mac);

}  // namespace vantrel::standins
