#include "tests/lockdown/MonitorTest.h"

#include "session/MainThreadOwned.h"

namespace vantrel {

void MonitorTest::TearDown() {
    releaseMonitor();
    BrowserTest::TearDown();
}

void MonitorTest::openInFullScreen() {
    installChrome();
    launch();
    mac().runFor(6);
    ASSERT_TRUE(launcher().isConfirmedFullscreen());
    forgetEvents();
}

void MonitorTest::openInWindow() {
    installChrome([](auto& chrome) { chrome.windows.at(0).frame = {{0, 24}, {1440, 876}}; });
    faults().fail(virtualmac::AccessibilityFaults::Operation::write, "AXFullScreen", accessibilityFailure, 1);
    launch();
    mac().runFor(3.1);
    launcher().cancelFullscreenRetry();
    mac().runFor(1);
    ASSERT_FALSE(launcher().isConfirmedFullscreen());
    ASSERT_TRUE(launcher().browserPID());
    // The menu bar keeps every window 24 points below the origin. The monitor would correct that, so Accessibility
    // reports the origin here.
    faults().answer("AXPosition", Point{0, 0});
    forgetEvents();
}

void MonitorTest::openNothing() {
    make();
}

std::shared_ptr<WindowMonitorService> MonitorTest::makeMonitor(Bundle& mainBundle) {
    auto& mac = computer();
    return makeMainThreadOwned<WindowMonitorService>(
        mac.dispatch, mac.threads,
        WindowMonitorService::Dependencies{mac.runningApplications, mac.windowList, mac.accessibility, mac.screens,
                                           mac.spaces, mac.frontmostApplication, mainBundle, mac.dispatch,
                                           mac.mainRunLoop, mac.log},
        BrowserKill(mac.runningApplications, mac.processLauncher, mac.threads, mac.clock, mac.log));
}

void MonitorTest::startMonitor() {
    mac().onMain([this] {
        service_ = makeMonitor();
        service_->onViolation = [this](const std::string& detail) { violations_.push_back(detail); };
        service_->onSessionEnded = [this](SessionEndReason reason) { ends_.push_back(reason); };
        launcher().windowMonitor = service_;
        service_->startMonitoring(sharedLauncher());
    });
    // Between the ticks, so that the test's next action comes before one.
    mac().runFor(0.1);
}

void MonitorTest::stopMonitor() {
    mac().onMain([this] { service_->stopMonitoring(); });
}

void MonitorTest::releaseMonitor() {
    if (service_) mac().onMain([this] { service_.reset(); });
}

void MonitorTest::runTicks(int count) {
    mac().runFor(count * WindowMonitorService::checkInterval);
}

std::vector<std::string> MonitorTest::monitorLines() const {
    auto all = lines("[MONITOR]");
    std::erase(all, started);
    std::erase(all, "[MONITOR] Fullscreen già confermato all'avvio");
    return all;
}

ProcessIdentifier MonitorTest::bringForward(const std::string& name, const std::string& bundleIdentifier) {
    virtualmac::ApplicationDescription description;
    description.name = name;
    if (!bundleIdentifier.empty()) description.bundleIdentifier = bundleIdentifier;
    const auto process = mac().processes().add(std::move(description));
    mac().processes().find(process)->comeToFront();
    return process;
}

std::vector<std::string> MonitorTest::writes() const {
    std::vector<std::string> all;
    for (const auto& event : events(ElementEvent::set)) all.push_back(event.text + "=" + event.field(Field::value));
    return all;
}

}  // namespace vantrel
