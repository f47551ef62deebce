#pragma once

#include "platform/macos/threads/MacDispatchQueue.h"
#include "platform/threads/Dispatch.h"

namespace vantrel::macos {

class MacDispatch final : public Dispatch {
  public:
    MacDispatch();

    DispatchQueue& mainQueue() override;
    DispatchQueue& userInitiatedQueue() override;
    std::shared_ptr<Semaphore> makeSemaphore(int value) override;
    std::shared_ptr<DispatchGroup> makeGroup() override;

  private:
    MacDispatchQueue mainQueue_;
    MacDispatchQueue userInitiatedQueue_;
};

}  // namespace vantrel::macos
