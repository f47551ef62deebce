#pragma once

#include <memory>

#include "platform/threads/Dispatch.h"

namespace vantrel::linuxdesktop {

class BackgroundQueue;
class MainQueue;

class LinuxDispatch final : public Dispatch {
  public:
    LinuxDispatch(MainQueue& mainQueue, BackgroundQueue& backgroundQueue)
        : mainQueue_(mainQueue), backgroundQueue_(backgroundQueue) {}

    DispatchQueue& mainQueue() override;
    DispatchQueue& userInitiatedQueue() override;
    std::shared_ptr<Semaphore> makeSemaphore(int value) override;
    std::shared_ptr<DispatchGroup> makeGroup() override;

  private:
    MainQueue& mainQueue_;
    BackgroundQueue& backgroundQueue_;
};

}  // namespace vantrel::linuxdesktop
