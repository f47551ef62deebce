#include "platform/macos/threads/MacRunLoop.h"

#include <utility>

#include "platform/macos/threads/MacTimer.h"
#include "platform/macos/threads/MainThread.h"

namespace vantrel::macos {

std::unique_ptr<Timer> MacRunLoop::scheduledTimer(double intervalSeconds, bool repeats, Block block) {
    requireMainThread("scheduledTimer");
    return std::make_unique<MacTimer>(intervalSeconds, repeats, std::move(block));
}

}  // namespace vantrel::macos
