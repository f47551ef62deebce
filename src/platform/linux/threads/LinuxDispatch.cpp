#include "platform/linux/threads/LinuxDispatch.h"

#include "platform/linux/threads/BackgroundQueue.h"
#include "platform/linux/threads/LinuxSemaphore.h"
#include "platform/linux/threads/MainQueue.h"
#include "platform/portable/CountingDispatchGroup.h"

namespace vantrel::linuxdesktop {

DispatchQueue& LinuxDispatch::mainQueue() {
    return mainQueue_;
}

DispatchQueue& LinuxDispatch::userInitiatedQueue() {
    return backgroundQueue_;
}

std::shared_ptr<Semaphore> LinuxDispatch::makeSemaphore(int value) {
    return std::make_shared<LinuxSemaphore>(value);
}

std::shared_ptr<DispatchGroup> LinuxDispatch::makeGroup() {
    return std::make_shared<CountingDispatchGroup>();
}

}  // namespace vantrel::linuxdesktop
