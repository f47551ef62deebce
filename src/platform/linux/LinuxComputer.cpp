#include "platform/linux/LinuxComputer.h"

#include <signal.h>

#include <QApplication>
#include <QEvent>
#include <QIcon>
#include <cstdlib>
#include <utility>

#include "platform/linux/apps/LinuxApplicationOpener.h"
#include "platform/linux/apps/LinuxBundle.h"
#include "platform/linux/apps/LinuxFrontmostApplication.h"
#include "platform/linux/apps/LinuxProcessLauncher.h"
#include "platform/linux/apps/LinuxRunningApplications.h"
#include "platform/linux/apps/LinuxWorkspace.h"
#include "platform/linux/apps/StartedBundles.h"
#include "platform/linux/desktop/FullScreenDesktops.h"
#include "platform/linux/desktop/LinuxAccessibility.h"
#include "platform/linux/desktop/LinuxScreens.h"
#include "platform/linux/desktop/LinuxSpaces.h"
#include "platform/linux/desktop/LinuxWindowList.h"
#include "platform/linux/guard/GuardSource.h"
#include "platform/linux/keyboard/LinuxKeyboardTaps.h"
#include "platform/linux/network/LinuxURLSession.h"
#include "platform/linux/statusbar/LinuxStatusBar.h"
#include "platform/linux/system/LinuxAccessibilityTrust.h"
#include "platform/linux/system/LinuxCaptureAuthorization.h"
#include "platform/linux/system/LinuxFileManager.h"
#include "platform/linux/system/LinuxUserDefaults.h"
#include "platform/linux/system/OwnEnvironment.h"
#include "platform/linux/system/QtMessages.h"
#include "platform/linux/system/TerminationSignals.h"
#include "platform/linux/system/WaylandSigns.h"
#include "platform/linux/threads/BackgroundQueue.h"
#include "platform/linux/threads/DelayedWork.h"
#include "platform/linux/threads/LinuxClock.h"
#include "platform/linux/threads/LinuxDispatch.h"
#include "platform/linux/threads/LinuxRunLoop.h"
#include "platform/linux/threads/LinuxThreads.h"
#include "platform/linux/threads/MainQueue.h"
#include "platform/linux/threads/MainThread.h"
#include "platform/linux/threads/RunLoopModes.h"
#include "platform/linux/ui/AlertIcon.h"
#include "platform/linux/ui/Appearance.h"
#include "platform/linux/ui/LinuxAlerts.h"
#include "platform/linux/ui/LinuxApplication.h"
#include "platform/linux/ui/LinuxOverlays.h"
#include "platform/linux/ui/LinuxWindows.h"
#include "platform/linux/ui/LostDisplay.h"
#include "platform/linux/ui/MenuBars.h"
#include "platform/linux/ui/MenuBuilder.h"
#include "platform/linux/ui/QtConnection.h"
#include "platform/linux/ui/Responder.h"
#include "platform/linux/x11/FrontWindows.h"
#include "platform/linux/x11/WindowManager.h"
#include "platform/linux/x11/X11WindowSurvey.h"
#include "platform/portable/ComputerOf.h"
#include "platform/portable/ICUText.h"
#include "platform/portable/PortableJSONSerialization.h"
#include "platform/portable/PortableURLs.h"
#include "platform/portable/StandardOutputLog.h"
#include "platform/portable/UTCDateFormatter.h"

namespace vantrel::linuxdesktop {

namespace {

// One point is one pixel, in Qt as in XCB, and the client looks the same on every desktop.
void prepareEnvironment() {
    OwnEnvironment::set("QT_QPA_PLATFORM", "xcb");
    OwnEnvironment::set("QT_ENABLE_HIGHDPI_SCALING", "0");
    OwnEnvironment::set("QT_QPA_PLATFORMTHEME", "");
    for (const char* name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_AUTO_SCREEN_SCALE_FACTOR",
                             "QT_USE_PHYSICAL_DPI", "QT_STYLE_OVERRIDE", "QT_LOGGING_RULES"}) {
        OwnEnvironment::unset(name);
    }
    keepLibdbusFromStartingABus();
    signal(SIGPIPE, SIG_IGN);
    // A limit for the size of files: what does not fit is an error of the write.
    signal(SIGXFSZ, SIG_IGN);
    // Whoever started the client may ignore the end of its children, which is inherited: a wait for one process would
    // then last until all have gone.
    signal(SIGCHLD, SIG_DFL);
}

std::unique_ptr<QApplication> makeApplication() {
    // Qt keeps references to both as long as the application lives.
    static int count = 1;
    static char name[] = "vantrel";
    static char* arguments[] = {name, nullptr};
    auto application = std::make_unique<QApplication>(count, arguments);
    application->setQuitOnLastWindowClosed(false);
    application->setDesktopFileName(QString::fromStdString(LinuxBundle().identifier().value_or("")));
    application->setWindowIcon(QIcon(applicationIcon(128)));
    Appearance::apply(*application);
    return application;
}

std::string displayVariable() {
    const char* value = std::getenv("DISPLAY");
    return value != nullptr ? value : "";
}

}  // namespace

// The order matters: members are destroyed in reverse, so those that may still call others go before the ones they
// call.
struct LinuxComputer::Parts {
    Parts(std::unique_ptr<QApplication> qt, std::unique_ptr<X11Connection> toServer,
          std::unique_ptr<X11Watcher> toWatch, Block endProcess)
        : qtApplication(std::move(qt)),
          connection(std::move(toServer)),
          watcher(std::move(toWatch)),
          endClient(puttingBackFirst(std::move(endProcess))),
          application(mainThread, menuBars, windowsOfAll, endClient) {
        responder.setTerminate([this] { application.terminate(); });
        if (!endClient) return;
        lostDisplay = std::make_unique<LostDisplay>(mainThread, modes,
                                                    LostDisplay::Ends{[this] { application.terminate(); }, endClient});
    }

    // Needed because no destructor runs when the process ends this way.
    Block puttingBackFirst(Block endProcess) {
        if (!endProcess) return {};
        return [this, endProcess = std::move(endProcess)] {
            fullScreenDesktops.putBackAll();
            endProcess();
        };
    }

    ~Parts() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    std::unique_ptr<QApplication> qtApplication;
    std::unique_ptr<X11Connection> connection;
    std::unique_ptr<X11Watcher> watcher;
    StartedBundles startedBundles;
    X11Windows windowsOfAll{*connection, [this](ProcessIdentifier owner) { return startedBundles.takenFor(owner); }};

    MainThread mainThread;
    GuardSource guards{mainThread};
    RunLoopModes modes;
    DelayedWork delayedWork;
    MainQueue mainQueue{mainThread, delayedWork};
    LinuxRunLoop mainRunLoop{mainThread, delayedWork, modes};
    BackgroundQueue backgroundQueue{delayedWork};
    LinuxDispatch dispatch{mainQueue, backgroundQueue};
    LinuxThreads threads{mainThread};
    LinuxClock clock;
    StandardOutputLog log;

    PortableJSONSerialization json;
    PortableURLs urls;
    ICUText unicode;
    UTCDateFormatter dates;
    LinuxFileManager files;
    LinuxBundle mainBundle;
    LinuxUserDefaults userDefaults{LinuxUserDefaults::standardFile(), json};
    LinuxURLSession urlSession;

    Responder responder;
    MenuBuilder menuBuilder{mainThread, modes, responder};
    MenuBars menuBars{menuBuilder};
    const Block endClient;
    LinuxApplication application;
    LinuxScreens screens{*connection, windowsOfAll, *watcher, mainQueue};
    LinuxAlerts alerts{modes, screens, windowsOfAll};
    LinuxWindows windows{
        {mainThread, screens, menuBars, *connection, windowsOfAll, [this] { application.terminate(); }}};
    X11WindowSurvey survey{*connection, windowsOfAll};
    FrontWindows frontWindows{*connection, *watcher};
    LinuxStatusBar statusBar{{menuBuilder, screens, *connection, *watcher, survey, frontWindows}};
    LinuxOverlays overlays{screens, *connection, frontWindows, guards};
    LinuxWorkspace workspace;
    LinuxRunningApplications runningApplications{{*connection, windowsOfAll, delayedWork, startedBundles},
                                                 displayVariable()};
    LinuxProcessLauncher processLauncher{startedBundles};
    LinuxApplicationOpener applicationOpener{processLauncher, runningApplications, windowsOfAll, delayedWork};
    LinuxFrontmostApplication frontmostApplication{windowsOfAll, runningApplications};
    FullScreenDesktops fullScreenDesktops{{*connection, windowsOfAll, survey,
                                           [this](xcb_window_t window) { watcher->watch(window); },
                                           [this] { return guards.guards(); }}};
    std::unique_ptr<Observation> fullScreenNotices =
        watcher->observe(X11Watcher::Change::windows, [this] { fullScreenDesktops.check(); });
    LinuxSpaces spaces{*watcher, mainQueue};
    LinuxKeyboardTaps keyboardTaps{mainThread, guards};
    LinuxWindowList windowList{*connection, survey, runningApplications, qtHasDisplay};
    LinuxAccessibility accessibility{{*connection, windowsOfAll, survey, fullScreenDesktops}};
    LinuxAccessibilityTrust accessibilityTrust;
    LinuxCaptureAuthorization captureAuthorization;
    TerminationSignals terminationSignals{[this] { application.terminate(); }};
    std::unique_ptr<LostDisplay> lostDisplay;
};

std::unique_ptr<LinuxComputer> LinuxComputer::create(Block endProcess, NoComputer& reason) {
    const char* home = std::getenv("HOME");
    if (home != nullptr && home[0] != '\0' && home[0] != '/') {
        reason = NoComputer::relativeHome;
        return nullptr;
    }
    const bool waylandSession = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    reason = waylandSession ? NoComputer::wayland : NoComputer::noX11Display;
    auto connection = X11Connection::open();
    if (!connection) return nullptr;
    const WaylandSigns signs{connection->hasExtension("XWAYLAND"), connection->outputNames(),
                             qEnvironmentVariable("XDG_SESSION_TYPE").toStdString(),
                             qEnvironmentVariable("WAYLAND_DISPLAY").toStdString()};
    if (signs.showWayland()) {
        reason = NoComputer::wayland;
        return nullptr;
    }
    prepareEnvironment();
    qInstallMessageHandler(sayQtMessage);
    auto application = makeApplication();
    auto watcher = X11Watcher::open();
    if (!watcher) return nullptr;
    return std::unique_ptr<LinuxComputer>(new LinuxComputer(std::make_unique<Parts>(
        std::move(application), std::move(connection), std::move(watcher), std::move(endProcess))));
}

LinuxComputer::LinuxComputer(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

LinuxComputer::~LinuxComputer() = default;

Computer LinuxComputer::computer() {
    return computerOf(*parts_);
}

std::optional<NoComputer> LinuxComputer::whyNoClassCanBegin() {
    switch (windowManagerOf(*parts_->connection)) {
        case WindowManager::none:
            return NoComputer::noWindowManager;
        case WindowManager::withoutFullScreen:
            return NoComputer::noFullScreen;
        case WindowManager::losingFullScreen:
            return NoComputer::losesFullScreen;
        case WindowManager::withFullScreen:
            break;
    }
    return std::nullopt;
}

void LinuxComputer::postEvent(Block event) {
    parts_->mainThread.post(std::move(event));
}

std::size_t LinuxComputer::timerCount() const {
    return parts_->mainRunLoop.timerCount();
}

}  // namespace vantrel::linuxdesktop
