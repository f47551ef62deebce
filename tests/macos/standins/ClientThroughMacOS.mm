#include "tests/macos/standins/ClientThroughMacOS.h"

#include <memory>

#include "app/ApplicationMain.h"
#include "platform/virtual/calls/CheckedComputer.h"
#include "tests/macos/standins/MacInUse.h"

// The client's main() and its call of applicationMain(), renamed by the build.
extern "C" int vantrel_client_main();
extern "C" void vantrel_application_main(const vantrel::Computer& platform);

// Before the platform, as before the virtual Mac's own parts, the seed chooses.
void vantrel_application_main(const vantrel::Computer& platform) {
    vantrel::virtualmac::CheckedComputer checked(vantrel::standins::mac().engine(), platform);
    vantrel::applicationMain(checked.computer());
}

namespace vantrel::standins {

std::function<void(const Computer&)> clientThroughMacOS(virtualmac::VirtualMac& mac) {
    const auto inUse = std::make_shared<MacInUse>(mac);
    mac.application().exitWhenTerminated();
    return [inUse](const Computer&) { withPool([] { vantrel_client_main(); })(); };
}

}  // namespace vantrel::standins
