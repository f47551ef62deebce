#include "platform/virtual/threads/VirtualDispatch.h"

#include "platform/portable/CountingDispatchGroup.h"
#include "platform/virtual/threads/VirtualSemaphore.h"

namespace vantrel::virtualmac {

std::shared_ptr<Semaphore> VirtualDispatch::makeSemaphore(int value) {
    return std::make_shared<VirtualSemaphore>(engine_, value);
}

std::shared_ptr<DispatchGroup> VirtualDispatch::makeGroup() {
    return std::make_shared<CountingDispatchGroup>();
}

void VirtualDispatch::MainQueue::asyncAfter(double seconds, Block block) {
    engine_.mainLoop.async(later(engine_.scheduler.now(), seconds), std::move(block));
}

void VirtualDispatch::GlobalQueue::asyncAfter(double seconds, Block block) {
    engine_.workers.runAt(later(engine_.scheduler.now(), seconds), std::move(block));
}

}  // namespace vantrel::virtualmac
