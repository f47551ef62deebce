#include <dispatch/dispatch.h>

#include <cstdlib>

#include "app/ApplicationMain.h"
#include "platform/macos/MacComputer.h"

int main() {
    dispatch_assert_queue(dispatch_get_main_queue());
    @autoreleasepool {
        vantrel::macos::MacComputer mac;
        vantrel::applicationMain(mac.computer());
    }
    return EXIT_SUCCESS;
}
