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
#include "platform/virtual/calls/CheckedComputer.h"
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
#include "platform/virtual/world/Activations.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// A whole Mac in memory, for one run of the client. The thread that creates it is its driver. Time passes only in the
/// driver's waits (runFor and the like, onMain, drain). Each wait returns after everything that was due has run, so
/// between waits the driver reads a state that does not change. One driver thread.
///
/// The destructor drains it without recording events, and answers everything that the client still asks with the last
/// button.
class VirtualMac {
  public:
    explicit VirtualMac(Options options = {});
    ~VirtualMac();
    VirtualMac(const VirtualMac&) = delete;
    VirtualMac& operator=(const VirtualMac&) = delete;

    /// The client's computer.
    Computer& computer() { return checked_.computer(); }
    /// The same without checks and without choices of the seed, for the world, and for another platform that stands on
    /// this Mac and has a CheckedComputer above it.
    Computer& parts() { return parts_; }

    /// Runs the function on the main thread as the process's main, as soon as the driver waits. Once for each Mac.
    void launch(std::function<void(Computer&)> main);
    /// False once the application has been terminated.
    bool isRunning() const { return !engine_.mainLoop.isOver(); }

    /// Whether the main thread has stopped in the end of the process (see VirtualApplication::exitWhenTerminated). What
    /// is on its stack refers to this Mac, which must then live until the program ends.
    bool hasExited() const { return engine_.mainLoop.hasExited(); }

    /// Runs the block on the main thread as an event and returns when it has finished; time may pass. If it never
    /// finishes, that is misuse and the result is false.
    bool onMain(Block block);
    /// The same as a block of the main queue.
    bool onMainQueue(Block block);
    /// Posts an event, which runs as soon as the driver waits.
    void postToMain(Block block) { engine_.mainLoop.postEvent(std::move(block)); }
    /// Runs on a thread of its own as soon as the driver waits.
    void inBackground(Block block) { engine_.workers.run(std::move(block)); }
    /// Something happens outside the client's threads, at that moment of uptime or this many seconds from now. One such
    /// block runs after another.
    void at(double time, Block block) { engine_.world.at(fromSeconds(time), std::move(block)); }
    void after(double seconds, Block block) { engine_.world.after(seconds, std::move(block)); }

    /// Seconds of uptime.
    double now() const { return toSeconds(engine_.scheduler.now()); }
    void runFor(double seconds);
    void runUntil(double time);
    /// Runs until only repeating timers are left and what waits for the participant. If that takes more than a day, it
    /// is misuse and the result is false.
    bool runUntilIdle();
    /// The same, but answers alerts with their last button, closes menus and releases stuck threads.
    void drain();
    /// The first step of the destructor: drains the Mac without recording events and lets its threads end. False if a
    /// thread does not end. Such a Mac cannot be destroyed; the only way out is std::_Exit.
    bool end();

    int systemVersion() const { return systemVersion_; }

    Leftovers leftovers() const;

    Participant& participant() { return participant_; }
    VirtualApplication& application() { return application_; }
    VirtualAlerts& alerts() { return alerts_; }
    MenuTracking& menus() { return menus_; }
    VirtualWindows& windows() { return windows_; }
    VirtualStatusBar& statusBar() { return statusBar_; }
    VirtualScreens& screens() { return screens_; }
    VirtualDesktop& desktop() { return desktop_; }
    Activations& activations() { return activations_; }
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
    const int systemVersion_;
    bool goesOn_ = false;
    Engine engine_;
    VirtualScreens screens_;
    VirtualFileManager files_;
    VirtualDesktop desktop_;
    Activations activations_;
    VirtualProcessLauncher processes_;
    VirtualWindows windows_;
    VirtualApplication application_;
    VirtualAlerts alerts_;
    MenuTracking menus_;
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
    Computer parts_;
    CheckedComputer checked_;
    Participant participant_;
};

}  // namespace vantrel::virtualmac
