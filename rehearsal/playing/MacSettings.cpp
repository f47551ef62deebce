#include "rehearsal/playing/MacSettings.h"

#include <array>

namespace vantrel::rehearsal {
namespace {

struct Browser {
    BrowserName name;
    const char* path;
    virtualmac::InstalledApplication (*make)();
};

constexpr std::array<Browser, 4> everyBrowser = {
    Browser{BrowserName::chrome, virtualmac::chromePath, virtualmac::chrome},
    Browser{BrowserName::edge, virtualmac::edgePath, virtualmac::edge},
    Browser{BrowserName::firefox, virtualmac::firefoxPath, virtualmac::firefox},
    Browser{BrowserName::safari, virtualmac::safariPath, virtualmac::safari}};

virtualmac::InstalledApplication installation(const Browser& browser, const InstalledBrowser& as) {
    auto made = browser.make();
    as.behaviour.applyTo(made.application);
    made.startFailure = as.startFailure;
    made.exitsAfter = as.exitsAfter;
    if (as.appearsAfter) made.appearsAfter = *as.appearsAfter;
    if (as.forks) made.forks = virtualmac::InstalledApplication::Fork{};
    for (auto& window : made.windows) window.after = as.windowAfter.value_or(window.after);
    return made;
}

/// Browsers that already run get the installed behaviour too.
void install(virtualmac::VirtualMac& mac, const Browser& browser, const InstalledBrowser& as, const std::string& path) {
    const auto made = installation(browser, as);
    mac.processes().install(path, made);
    for (const auto& process : mac.processes().all()) {
        if (process->bundleIdentifier() == made.application.bundleIdentifier) process->behaveLike(made.application);
    }
    if (browser.name != BrowserName::safari) return;
    mac.opener().setAnswerDelay(as.answerDelay.value_or(virtualmac::VirtualApplicationOpener::usualAnswerDelay));
    mac.opener().answerWithoutApplication(as.answersWithNothing);
}

void installBrowsers(virtualmac::VirtualMac& mac, const InstalledBrowsers& browsers) {
    const auto home = mac.files().homeDirectory();
    for (const auto& browser : everyBrowser) {
        const auto installed = browsers.find(browser.name);
        // Safari needs no mention to be there.
        if (browser.name == BrowserName::safari && installed == browsers.end()) continue;
        mac.processes().uninstall(browser.path);
        mac.processes().uninstall(home + browser.path);
        if (installed == browsers.end()) continue;
        install(mac, browser, installed->second, installed->second.isInHome ? home + browser.path : browser.path);
    }
}

void setSafari(virtualmac::VirtualMac& mac, bool isInstalled) {
    if (!isInstalled) return mac.processes().uninstall(virtualmac::safariPath);
    if (!mac.processes().isExecutable(virtualmac::safariPath)) {
        mac.processes().install(virtualmac::safariPath, virtualmac::safari());
    }
}

}  // namespace

void setUp(virtualmac::VirtualMac& mac, const MacSetup& setup) {
    mac.screens().setUp({setup.displays, 0, setup.separateSpaces});
    mac.files().setHomeDirectory(setup.home);
    apply(mac, setup);
}

void apply(virtualmac::VirtualMac& mac, const MacConditions& conditions) {
    if (conditions.lostAccessibility) {
        mac.keyboard().setFreezing(*conditions.lostAccessibility != LostAccessibility::frees);
        mac.trust().setHiding(*conditions.lostAccessibility == LostAccessibility::hides);
    }
    if (conditions.accessibility) mac.trust().setTrusted(*conditions.accessibility);
    if (conditions.microphone) mac.capture().setStatus(MediaType::audio, *conditions.microphone);
    if (conditions.camera) mac.capture().setStatus(MediaType::video, *conditions.camera);
    if (conditions.activation) mac.activations().setAnswer(*conditions.activation);
    if (conditions.alertsLetIn) mac.alerts().setLetIn(*conditions.alertsLetIn);
    if (conditions.alertsActivate) mac.alerts().setActivating(*conditions.alertsActivate);
    if (conditions.flagDelay) mac.desktop().setFlagDelay(*conditions.flagDelay);
    if (conditions.fullScreenDuration) mac.desktop().setFullScreenDuration(*conditions.fullScreenDuration);
    if (conditions.browsers) installBrowsers(mac, *conditions.browsers);
    if (conditions.safari) setSafari(mac, *conditions.safari);
}

}  // namespace vantrel::rehearsal
