#include "tests/browser/BrowserTest.h"

#include <algorithm>
#include <utility>

#include "session/MainThreadOwned.h"

namespace vantrel {

void BrowserTest::TearDown() {
    release();
    MacTest::TearDown();
}

void BrowserTest::install(const char* path, virtualmac::InstalledApplication application) {
    mac().processes().install(path, std::move(application));
}

void BrowserTest::installChrome(const std::function<void(virtualmac::InstalledApplication&)>& change) {
    auto chrome = virtualmac::chrome();
    if (change) change(chrome);
    install(virtualmac::chromePath, std::move(chrome));
}

ProcessIdentifier BrowserTest::startChrome() {
    const auto process = mac().processes().start(virtualmac::chromePath);
    mac().runFor(3);
    return process;
}

void BrowserTest::make(bool withMonitor, BrowserLauncher::Detection detect) {
    auto& mac = computer();
    launcher_ = makeMainThreadOwned<BrowserLauncher>(
        mac.dispatch, mac.threads,
        BrowserLauncher::Dependencies{mac.files, mac.processLauncher, mac.runningApplications, mac.applicationOpener,
                                      mac.windowList, mac.accessibility, mac.screens, mac.urls, mac.dispatch,
                                      mac.mainRunLoop, mac.threads, mac.clock, mac.log},
        std::move(detect));
    weak_ = launcher_;
    if (!withMonitor) return;
    monitor_ = std::make_shared<ConfirmationListener>();
    launcher_->windowMonitor = monitor_;
}

void BrowserTest::launch(const std::string& meetURL) {
    if (!launcher_) make();
    mac().inBackground([weak = weak_, meetURL] {
        if (const auto launcher = weak.lock()) launcher->launch(meetURL);
    });
}

void BrowserTest::attempt() {
    mac().onMain([this] { launcher_->attemptFullscreen(); });
}

void BrowserTest::close() {
    mac().onMain([this] { launcher_->closeBrowser(); });
}

void BrowserTest::release() {
    if (launcher_) mac().onMain([this] { launcher_.reset(); });
}

void BrowserTest::keepMainBusy(double seconds) {
    mac().postToMain([this, seconds] { computer().threads.sleep(seconds); });
}

void BrowserTest::keepMainBusyAndRelease(double seconds) {
    mac().postToMain([this, seconds] {
        computer().threads.sleep(seconds);
        launcher_.reset();
    });
}

double BrowserTest::timeOf(std::string_view line) const {
    for (const auto& event : events(ClientEvent::log)) {
        if (event.text == line) return event.time;
    }
    return -1;
}

std::vector<double> BrowserTest::timesOf(const EventKind& kind) const {
    std::vector<double> times;
    for (const auto& event : events(kind)) times.push_back(event.time);
    return times;
}

std::vector<std::string> BrowserTest::activationOptions() const {
    std::vector<std::string> options;
    for (const auto& event : events(ApplicationEvent::activate)) options.push_back(event.field(Field::options));
    return options;
}

std::size_t BrowserTest::count(std::string_view line) const {
    const auto all = logLines();
    return static_cast<std::size_t>(std::count(all.begin(), all.end(), line));
}

std::vector<std::string> BrowserTest::lines(std::string_view tag) const {
    auto all = logLines();
    std::erase_if(all, [tag](const std::string& line) { return !line.starts_with(tag); });
    return all;
}

bool BrowserTest::isRunning(ProcessIdentifier process) {
    return computer().runningApplications.withProcessIdentifier(process) != nullptr;
}

}  // namespace vantrel
