#pragma once

#include <optional>
#include <string>

#include "platform/virtual/VirtualMac.h"
#include "rehearsal/scenario/DesktopAction.h"
#include "rehearsal/transcript/Transcript.h"

namespace vantrel::rehearsal {

/// Performs a step's actions on the desktop, on the driver's thread.
class DesktopPerformer {
  public:
    DesktopPerformer(virtualmac::VirtualMac& mac, Transcript& transcript) : mac_(mac), transcript_(transcript) {}

    void perform(const DesktopAction& action);
    /// Starts another application; its process. If it has a window, it comes to the front with it.
    ProcessIdentifier launch(const OtherApplication& application);

  private:
    void operator()(const PressKeys& action);
    void operator()(const ShowApplication& action);
    void operator()(const DoToApplication& action);
    void operator()(const MoveWindow& action);
    void operator()(const ResizeWindow& action);
    void operator()(const OpenWindow& action);
    void operator()(const Swipe& action);
    void operator()(const ArrangeDisplay& action);
    void operator()(const MirrorDisplay& action);
    void operator()(const SetDisplayNotices& action);
    void operator()(const CloseCover& action);
    void operator()(const SetTaps& action);
    void operator()(const SetSecureInput& action);
    void operator()(const SetWindowList& action);
    void operator()(const FailElements& action);
    void operator()(const MendElements& action);
    void operator()(const SilenceApplication& action);
    void operator()(const HangClient& action);

    /// Where the cover that is shown over the display lies.
    std::optional<Rect> shownCover(const std::string& display) const;
    bool isRunning(const std::string& application) const;
    void note(const char* kind, const std::string& text);

    virtualmac::VirtualMac& mac_;
    Transcript& transcript_;
};

}  // namespace vantrel::rehearsal
