#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/ui/Alerts.h"
#include "platform/virtual/apps/VirtualProcessLauncher.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/ui/AlertPanel.h"
#include "platform/virtual/ui/VirtualApplication.h"
#include "platform/virtual/ui/VirtualWindows.h"
#include "platform/virtual/world/Activations.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// Modal alerts. Alerts that open under others are stacked. When the process ends or the Mac is drained, the last
/// button is the answer. An alert in front of which another application's full screen lies is seen if the system lets
/// it in there. A click on an ordinary alert brings the client to the front.
class VirtualAlerts final : public Alerts {
  public:
    struct Dependencies {
        Engine& engine;
        VirtualDesktop& desktop;
        Activations& activations;
        VirtualProcessLauncher& processes;
        VirtualWindows& windows;
        VirtualApplication& application;
    };
    using PanelPointer = std::shared_ptr<AlertPanel>;

    explicit VirtualAlerts(Dependencies dependencies);

    std::size_t runModal(const Alert& alert) override;

    /// The lower level of runModal(), as in the system: the panel is the client's matter, and so is giving the front
    /// back. What changes in the panel meanwhile is done through the operations below. Main thread.
    std::size_t run(const Alert& alert, const PanelPointer& panel);
    void orderFrontRegardless(const PanelPointer& panel);
    void setCollectionBehavior(const PanelPointer& panel, unsigned behavior);
    /// Ends it as if that button had been pressed.
    void stop(const PanelPointer& panel, std::size_t button);
    /// Whether somebody in front of the screen sees it, if nothing of the client lies over it (occlusionState).
    bool isSeen(const AlertPanel& panel) const;
    /// Whether it is the front alert's, the one that can be answered (modalWindow).
    bool isInFront(const PanelPointer& panel) const;

    /// Driver-facing, any thread: the alerts shown, the front one last, with their buttons as shown.
    std::vector<Alert> up() const;

    /// The number of the front alert (Engine::nextInFront), or 0 if none is shown.
    std::uint64_t inFront() const;
    bool isFrontSeen() const;
    /// Whether a click on the front alert brings the client to the front.
    bool isFrontActivating() const;

    /// Driver-facing, any thread: how the system lets alerts in from now on, and whether a click activates even where
    /// the panel asks that it does not. As a rule it leaves the client where it is, which is harder for the rules: then
    /// what follows the answer has to come to the front by itself.
    void setLetIn(AlertsLetIn letIn) { letIn_ = letIn; }
    void setActivating(bool activating) { activating_ = activating; }

    /// The participant presses a button of the front alert. Main thread, in an event. False if there is no such alert
    /// or button.
    bool answer(std::string_view button);
    /// Presses the last button.
    bool answerLast();

  private:
    struct Shown {
        Alert alert;
        PanelPointer panel;
        std::uint64_t number = 0;
        bool isToldSeen = true;
        std::optional<std::size_t> answer;
    };
    using ShownPointer = std::shared_ptr<Shown>;

    std::size_t runWhereTheUserIs(const Alert& alert);
    ProcessIdentifier whoIsInFront() const;
    /// Where the one that was there has ended.
    void rememberWhoIsInFront();
    bool isAlive(ProcessIdentifier process) const;
    /// `unseen` looks before this one have found it unseen.
    void look(const PanelPointer& panel, int& unseen);
    bool hasTakenTheFront() const;
    void giveTheFrontBack(int times);
    bool answer(const ShownPointer& shown, std::size_t index);
    ShownPointer front() const;
    /// The alert of that panel. Null if it is not up.
    ShownPointer shownWith(const PanelPointer& panel) const;
    /// Records for each alert whether it is seen, where that has changed.
    void tellWhoIsSeen();

    const Dependencies dependencies_;
    Engine& engine_;
    std::atomic<AlertsLetIn> letIn_ = AlertsLetIn::atOnce;
    std::atomic<bool> activating_ = false;
    /// Who was in front before a question, and who came there last after its end. Main thread.
    struct InFront {
        ProcessIdentifier process = 0;
        ProcessIdentifier successor = 0;
    };
    InFront before_;
    mutable std::mutex mutex_;
    std::vector<ShownPointer> stack_;
};

}  // namespace vantrel::virtualmac
