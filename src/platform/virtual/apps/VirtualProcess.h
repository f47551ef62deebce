#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/apps/RunningApplications.h"
#include "platform/portable/UTF8Validity.h"
#include "platform/virtual/apps/InstalledApplication.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/world/Activations.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// One process, and the client's handle of it. Any thread.
class VirtualProcess final : public RunningApplication, public std::enable_shared_from_this<VirtualProcess> {
  public:
    enum class State { starting, running, zombie, gone };
    struct Origin {
        ProcessIdentifier identifier = 0;
        std::string path;
        std::vector<std::string> arguments;
    };

    VirtualProcess(Engine& engine, VirtualDesktop& desktop, Activations& activations, Origin origin,
                   ApplicationDescription description)
        : engine_(engine),
          desktop_(desktop),
          activations_(activations),
          origin_(std::move(origin)),
          description_(std::move(description)) {}

    ProcessIdentifier processIdentifier() const override { return origin_.identifier; }
    std::optional<std::string> bundleIdentifier() const override { return description_.bundleIdentifier; }
    std::optional<std::string> localizedName() const override {
        return description_.name.empty() ? std::nullopt : std::optional(repairedUTF8(description_.name));
    }
    bool isTerminated() const override;
    bool activate(ActivationOptions options) override;
    bool terminate() override;
    bool forceTerminate() override;

    /// The lower level of activate(), as in the system: activateWithOptions:, activateFromApplication:options:, and the
    /// accessibility attribute AXFrontmost. False if the system declines.
    bool requestActivation(ActivationOptions options);
    bool requestActivationFrom(const FrontCandidate& other, ActivationOptions options);
    void becomeFrontmost();
    bool isFrontmost() const { return desktop_.isFrontmost(origin_.identifier); }

    const Origin& origin() const { return origin_; }
    ApplicationDescription description() const;
    FrontCandidate asCandidate() const { return {origin_.identifier, description_.name}; }
    State state() const { return state_; }
    /// Whether it has not ended.
    bool isAlive() const { return state_ == State::starting || state_ == State::running; }
    /// Whether it is listed among the running applications.
    bool isListed() const { return state_ == State::running && description_.isApplication; }
    /// Whether the client finds it in that list: for a process the list only grows on a turn of its main run loop.
    bool isAnnounced() const { return announced_ && isListed(); }

    /// From now on it follows the description when asked to end or to come to the front. Its identity does not change.
    void behaveLike(const ApplicationDescription& description);
    /// From now on it is listed.
    void appear();
    void appearSilently();
    /// The client has heard of it already.
    void announce() { announced_ = true; }
    /// Its parent will not wait for it.
    void leaveZombie();
    /// False if it has ended before. Its windows close with it.
    bool exit();
    void exitAfter(double seconds);
    /// Comes to the front by itself or through the participant.
    void comeToFront();
    /// The effect of kill(2). False if the process no longer exists.
    bool receive(int signal);

  private:
    class Ways;

    bool follow(const Activations::Decision& decision);
    /// False if it cannot be asked. `more` are the event's fields besides the process.
    bool ask(ApplicationEvent kind, const Fields& more = {});

    Engine& engine_;
    VirtualDesktop& desktop_;
    Activations& activations_;
    const Origin origin_;
    mutable std::mutex mutex_;
    /// Its identity never changes. Its behaviour can, under the mutex.
    ApplicationDescription description_;
    std::atomic<State> state_ = State::starting;
    std::atomic<bool> announced_ = false;
};

}  // namespace vantrel::virtualmac
