#pragma once

#include "platform/threads/Threads.h"

namespace vantrel::linuxdesktop {

class MainThread;

class LinuxThreads final : public Threads {
  public:
    explicit LinuxThreads(const MainThread& mainThread) : mainThread_(mainThread) {}

    bool isMainThread() const override;
    void sleep(double seconds) override;

  private:
    const MainThread& mainThread_;
};

}  // namespace vantrel::linuxdesktop
