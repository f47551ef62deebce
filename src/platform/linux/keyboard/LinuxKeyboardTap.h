#pragma once

#include <unistd.h>

#include <memory>
#include <optional>
#include <string_view>
#include <thread>

#include "platform/keyboard/KeyboardTap.h"
#include "platform/linux/keyboard/KeyGuards.h"
#include "platform/linux/keyboard/KeyboardFilter.h"
#include "platform/linux/keyboard/MainThreadPulse.h"
#include "platform/linux/system/FileDescriptor.h"
#include "platform/linux/threads/ProcessorWait.h"

namespace vantrel::linuxdesktop {

class MainThread;

/// A keyboard filter on its own thread, which makes the decisions. Created and destroyed on the main thread. The
/// destructor waits for the filter's thread; no report comes after it.
class LinuxKeyboardTap final : public KeyboardTap {
  public:
    /// What the tap is made of. The filter already has its grab.
    struct Dependencies {
        std::unique_ptr<KeyboardFilter> filter;
        std::unique_ptr<KeyGuards> guards;
        FileDescriptor stop;
    };

    LinuxKeyboardTap(Dependencies dependencies, MainThread& mainThread, KeyDecision decision, KeyReport report);
    ~LinuxKeyboardTap() override;

  private:
    enum class End { stopped, disconnected, mainThreadIsLate, unguarded };

    void run();
    std::optional<End> serve();
    void say(End lost);
    std::string_view whyDisconnected();
    void wait();
    bool swallows(const KeyEvent& event);
    void report(std::string_view name);

    MainThread& mainThread_;
    const KeyDecision decision_;
    // Belongs to the main thread. Posted blocks hold it weakly.
    std::shared_ptr<const KeyReport> report_;
    const std::weak_ptr<const KeyReport> weakReport_;
    // From here on only the filter's thread uses these, except for the stop signal.
    Dependencies dependencies_;
    const ProcessorWait mainThreadsWait_{getpid()};
    MainThreadPulse pulse_;
    bool wasKeyPressed_ = false;
    std::thread thread_;
};

}  // namespace vantrel::linuxdesktop
