#include <dispatch/dispatch.h>

#include <cstdlib>

#include "app/ApplicationMain.h"
#include "platform/macos/MacComputer.h"
#include "platform/macos/threads/MainThreadWatch.h"

int main() {
    dispatch_assert_queue(dispatch_get_main_queue());
    vantrel::macos::MainThreadWatch::start();
    @autoreleasepool {
        vantrel::macos::MacComputer mac;
        vantrel::applicationMain(mac.computer());
    }
    return EXIT_SUCCESS;
}
