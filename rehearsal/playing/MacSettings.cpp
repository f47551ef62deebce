#include "rehearsal/playing/MacSettings.h"

#include <algorithm>
#include <array>

namespace vantrel::rehearsal {
namespace {

struct Browser {
    InstalledBrowser name;
    const char* path;
    virtualmac::InstalledApplication (*make)();
};

constexpr std::array<Browser, 3> everyBrowser = {
    Browser{InstalledBrowser::chrome, virtualmac::chromePath, virtualmac::chrome},
    Browser{InstalledBrowser::edge, virtualmac::edgePath, virtualmac::edge},
    Browser{InstalledBrowser::firefox, virtualmac::firefoxPath, virtualmac::firefox}};

/// Browsers that already run get the installed behaviour too.
void installBrowsers(virtualmac::VirtualMac& mac, const MacConditions& conditions) {
    for (const auto& browser : everyBrowser) {
        if (std::find(conditions.browsers->begin(), conditions.browsers->end(), browser.name) ==
            conditions.browsers->end()) {
            mac.processes().uninstall(browser.path);
            continue;
        }
        auto installed = browser.make();
        const auto behaviour = conditions.behaviours.find(browser.name);
        if (behaviour != conditions.behaviours.end()) behaviour->second.applyTo(installed.application);
        mac.processes().install(browser.path, installed);
        for (const auto& process : mac.processes().all()) {
            if (process->bundleIdentifier() == installed.application.bundleIdentifier) {
                process->behaveLike(installed.application);
            }
        }
    }
}

}  // namespace

void setUp(virtualmac::VirtualMac& mac, const MacSetup& setup) {
    mac.screens().setUp({setup.displays, 0, setup.separateSpaces});
    mac.files().setHomeDirectory(setup.home);
    apply(mac, setup);
}

void apply(virtualmac::VirtualMac& mac, const MacConditions& conditions) {
    if (conditions.accessibility) mac.trust().setTrusted(*conditions.accessibility);
    if (conditions.microphone) mac.capture().setStatus(MediaType::audio, *conditions.microphone);
    if (conditions.camera) mac.capture().setStatus(MediaType::video, *conditions.camera);
    if (conditions.flagDelay) mac.desktop().setFlagDelay(*conditions.flagDelay);
    if (conditions.fullScreenDuration) mac.desktop().setFullScreenDuration(*conditions.fullScreenDuration);
    if (conditions.browsers) installBrowsers(mac, conditions);
}

}  // namespace vantrel::rehearsal
