#include "platform/macos/threads/MacDispatch.h"

#include "platform/macos/threads/MacDispatchGroup.h"
#include "platform/macos/threads/MacSemaphore.h"

namespace vantrel::macos {

MacDispatch::MacDispatch()
    : mainQueue_(dispatch_get_main_queue()),
      userInitiatedQueue_(dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0)) {}

DispatchQueue& MacDispatch::mainQueue() {
    return mainQueue_;
}

DispatchQueue& MacDispatch::userInitiatedQueue() {
    return userInitiatedQueue_;
}

std::shared_ptr<Semaphore> MacDispatch::makeSemaphore(int value) {
    return std::make_shared<MacSemaphore>(value);
}

std::shared_ptr<DispatchGroup> MacDispatch::makeGroup() {
    return std::make_shared<MacDispatchGroup>();
}

}  // namespace vantrel::macos
