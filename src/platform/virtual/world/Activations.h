#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "platform/desktop/Accessibility.h"
#include "platform/portable/FrontRequests.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// How the system answers the client's request to bring an application to the front while another one is in front.
enum class ActivationAnswer {
    /// Yes, and it comes. macOS 13.
    brings,
    /// No. In the place of the application in front it comes.
    refuses,
    /// Yes, and nothing happens, in the place of the application in front either.
    ignores,
    /// Yes, and it comes lateActivation seconds later.
    comesLate,
};

inline constexpr double lateActivation = 2;

/// Decides which application may come to the front. From macOS 14 on, activation is cooperative: an application that is
/// not in front has no right to it, and none to bring another one there. Whatever the answer, a request is followed
/// while the client or the application itself is in front, or none is. Any thread.
class Activations {
  public:
    Activations(const VirtualDesktop& desktop, int systemVersion)
        : desktop_(desktop),
          isCooperative_(systemVersion >= firstCooperativeSystem),
          answer_(isCooperative_ ? ActivationAnswer::refuses : ActivationAnswer::brings) {}

    struct Decision {
        bool accepted = true;
        /// Empty: it does not come.
        std::optional<double> comesAfter = 0.0;
    };

    /// The client's process. It is being launched, so it comes to the front when it first asks for that.
    void setClient(ProcessIdentifier client) { client_ = client; }
    bool isClientInFront() const { return desktop_.isFrontmost(client_); }

    /// The client asks for the process.
    Decision decide(ProcessIdentifier process);
    /// The same in the place of another application.
    Decision decide(ProcessIdentifier process, ProcessIdentifier inPlaceOf);
    /// The process asks for itself, when the client has started it or has had it open something.
    bool mayComeByItself(ProcessIdentifier process, const std::optional<std::string>& bundleIdentifier) const;

    /// The client lets applications with that identifier come to the front, as long as it is there itself.
    void yieldTo(std::string bundleIdentifier);
    std::string yieldedTo() const;

    /// Driver-facing.
    void setAnswer(ActivationAnswer answer) { answer_ = answer; }

    /// Whether there are requests in the place of another application, and yielding.
    bool isCooperative() const { return isCooperative_; }

    /// Set once, before the Mac starts: writes an application's AXFrontmost as the client.
    std::function<AccessibilityError(ProcessIdentifier)> makeFrontmost;

    /// What the client's own requests through the platform header have asked for.
    FrontRequests requests;

  private:
    static constexpr int firstCooperativeSystem = 14;

    bool isFree(ProcessIdentifier process) const;

    const VirtualDesktop& desktop_;
    const bool isCooperative_;
    std::atomic<ActivationAnswer> answer_;
    std::atomic<ProcessIdentifier> client_ = 0;
    std::atomic<bool> isLaunching_ = true;
    mutable std::mutex mutex_;
    std::string yieldedTo_;
};

}  // namespace vantrel::virtualmac
