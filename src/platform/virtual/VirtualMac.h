#pragma once

#include <functional>

#include "platform/Computer.h"
#include "platform/portable/ICUText.h"
#include "platform/portable/UTCDateFormatter.h"
#include "platform/virtual/Leftovers.h"
#include "platform/virtual/apps/VirtualApplicationOpener.h"
#include "platform/virtual/apps/VirtualBundle.h"
#include "platform/virtual/apps/VirtualFrontmostApplication.h"
#include "platform/virtual/apps/VirtualProcessLauncher.h"
#include "platform/virtual/apps/VirtualRunningApplications.h"
#include "platform/virtual/apps/VirtualWorkspace.h"
#include "platform/virtual/desktop/VirtualAccessibility.h"
#include "platform/virtual/desktop/VirtualScreens.h"
#include "platform/virtual/desktop/VirtualSpaces.h"
#include "platform/virtual/desktop/VirtualWindowList.h"
#include "platform/virtual/keyboard/VirtualKeyboardTaps.h"
#include "platform/virtual/network/VirtualJSONSerialization.h"
#include "platform/virtual/network/VirtualURLSession.h"
#include "platform/virtual/network/VirtualURLs.h"
#include "platform/virtual/participant/KeyDelivery.h"
#include "platform/virtual/participant/Participant.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/scheduler/Options.h"
#include "platform/virtual/system/VirtualAccessibilityTrust.h"
#include "platform/virtual/system/VirtualCaptureAuthorization.h"
#include "platform/virtual/system/VirtualFileManager.h"
#include "platform/virtual/system/VirtualLog.h"
#include "platform/virtual/system/VirtualUserDefaults.h"
#include "platform/virtual/threads/VirtualClock.h"
#include "platform/virtual/threads/VirtualDispatch.h"
#include "platform/virtual/threads/VirtualRunLoop.h"
#include "platform/virtual/threads/VirtualThreads.h"
#include "platform/virtual/ui/MenuTracking.h"
#include "platform/virtual/ui/VirtualAlerts.h"
#include "platform/virtual/ui/VirtualApplication.h"
#include "platform/virtual/ui/VirtualOverlays.h"
#include "platform/virtual/ui/VirtualStatusBar.h"
#include "platform/virtual/ui/VirtualWindows.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// A whole Mac in memory, for one run of the client. Whoever makes it is its driver: time passes only in the driver's
/// waits (runFor and its like, onMain, drain), and each of them returns after everything that was due has run, so that
/// between them the driver reads a state that stands still. One driver thread.
///
/// Its end drains it unheard, and answers whatever the client still asks with the last button.
class VirtualMac {
  public:
    explicit VirtualMac(Options options = {});
    ~VirtualMac();
    VirtualMac(const VirtualMac&) = delete;
    VirtualMac& operator=(const VirtualMac&) = delete;

    Computer& computer() { return computer_; }

    /// Runs the function on the main thread as the process's main, once the driver waits. Once for each Mac.
    void launch(std::function<void(Computer&)> main);
    /// Whether the application has not been terminated.
    bool isRunning() const { return !engine_.mainLoop.isOver(); }

    /// Runs the block on the main thread as an event and returns when it has finished; time may pass. False, with
    /// misuse, when it never does.
    bool onMain(Block block);
    /// The same as a block of the main queue.
    bool onMainQueue(Block block);
    /// As an event, once the driver waits.
    void postToMain(Block block) { engine_.mainLoop.postEvent(std::move(block)); }
    /// On a thread of its own, once the driver waits.
    void inBackground(Block block) { engine_.workers.run(std::move(block)); }
    /// The world does something at that moment of uptime, or so many seconds from now: apart from the client's threads,
    /// one thing after another.
    void at(double time, Block block) { engine_.world.at(fromSeconds(time), std::move(block)); }
    void after(double seconds, Block block) { engine_.world.after(seconds, std::move(block)); }

    /// Seconds of uptime.
    double now() const { return toSeconds(engine_.scheduler.now()); }
    void runFor(double seconds);
    void runUntil(double time);
    /// Until nothing is left to happen but repeating timers, and what waits for the participant. Misuse, and false,
    /// when that is not so after a day.
    bool runUntilIdle();
    /// The same, while alerts are answered with their last button, menus closed, and threads that are stuck let go.
    void drain();
    /// What the destructor does first: drains the Mac unheard and lets its threads end. False when one of them goes on
    /// for ever; such a Mac cannot be destroyed, and nothing is left but std::_Exit.
    bool end();

    Leftovers leftovers() const;

    Participant& participant() { return participant_; }
    VirtualApplication& application() { return application_; }
    VirtualAlerts& alerts() { return alerts_; }
    MenuTracking& menus() { return menus_; }
    VirtualWindows& windows() { return windows_; }
    VirtualStatusBar& statusBar() { return statusBar_; }
    VirtualScreens& screens() { return screens_; }
    VirtualDesktop& desktop() { return desktop_; }
    VirtualSpaces& spaces() { return spaces_; }
    VirtualOverlays& overlays() { return overlays_; }
    VirtualKeyboardTaps& keyboard() { return keyboard_; }
    KeyDelivery& keys() { return keys_; }
    VirtualWindowList& windowList() { return windowList_; }
    VirtualWorkspace& workspace() { return workspace_; }
    VirtualApplicationOpener& opener() { return opener_; }
    VirtualRunningApplications& applications() { return applications_; }
    VirtualProcessLauncher& processes() { return processes_; }
    VirtualAccessibilityTrust& trust() { return trust_; }
    VirtualAccessibility& accessibility() { return accessibility_; }
    VirtualCaptureAuthorization& capture() { return capture_; }
    VirtualClock& clock() { return clock_; }
    VirtualUserDefaults& defaults() { return defaults_; }
    VirtualURLs& urls() { return urls_; }
    VirtualURLSession& network() { return network_; }
    VirtualJSONSerialization& json() { return json_; }
    VirtualFileManager& files() { return files_; }
    Engine& engine() { return engine_; }

  private:
    bool finish(const std::function<void(Block)>& submit, Block block, const char* what);

    const bool reportLeftovers_;
    bool goesOn_ = false;
    Engine engine_;
    VirtualScreens screens_;
    VirtualFileManager files_;
    VirtualDesktop desktop_;
    VirtualProcessLauncher processes_;
    VirtualApplication application_;
    VirtualAlerts alerts_;
    MenuTracking menus_;
    VirtualWindows windows_;
    VirtualStatusBar statusBar_;
    VirtualSpaces spaces_;
    VirtualOverlays overlays_;
    VirtualAccessibilityTrust trust_;
    VirtualKeyboardTaps keyboard_;
    KeyDelivery keys_;
    VirtualWindowList windowList_;
    VirtualWorkspace workspace_;
    VirtualApplicationOpener opener_;
    VirtualFrontmostApplication frontmost_;
    VirtualRunningApplications applications_;
    VirtualAccessibility accessibility_;
    VirtualCaptureAuthorization capture_;
    VirtualDispatch dispatch_;
    VirtualRunLoop runLoop_;
    VirtualThreads threads_;
    VirtualClock clock_;
    VirtualLog log_;
    VirtualUserDefaults defaults_;
    VirtualURLs urls_;
    VirtualURLSession network_;
    VirtualJSONSerialization json_;
    ICUText unicode_;
    UTCDateFormatter dates_;
    VirtualBundle bundle_;
    Computer computer_;
    Participant participant_;
};

}  // namespace vantrel::virtualmac
