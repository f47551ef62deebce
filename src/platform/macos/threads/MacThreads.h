#pragma once

#include "platform/threads/Threads.h"

namespace vantrel::macos {

class MacThreads final : public Threads {
  public:
    bool isMainThread() const override;
    void sleep(double seconds) override;
};

}  // namespace vantrel::macos
