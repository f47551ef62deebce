// played-recording SEED: prints a recording of a varied minute on the virtual Mac, for the tests of
// script/read-recording.
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "platform/virtual/VirtualMac.h"
#include "record/RecordMain.h"

namespace {

using namespace vantrel;
using namespace vantrel::virtualmac;

void playApplications(VirtualMac& mac) {
    Participant& person = mac.participant();
    const auto chrome = mac.applications().add({"Google Chrome", "com.google.Chrome"});
    const auto notes = mac.applications().add({"Note", "com.apple.Notes"});
    mac.applications().openWindow(chrome, {"Lezione", {{100, 100}, {800, 600}}});
    mac.runFor(1.2);
    mac.applications().openWindow(notes, {"Appunti", {{200, 150}, {500, 400}}});
    mac.runFor(1.2);
    person.bringToFront("Google Chrome");
    mac.runFor(1.2);
    person.openWindowOf("Note", {"Lista", {{240, 180}, {500, 400}}});
    mac.runFor(1.2);
    person.closeWindowOf("Note");
    mac.runFor(1.2);
    person.minimiseWindowOf("Google Chrome");
    mac.runFor(1.2);
    person.restoreWindowOf("Google Chrome");
    mac.runFor(1.2);
    person.hideOthersOf("Google Chrome");
    mac.runFor(1.2);
    person.bringToFront("Note");
    mac.runFor(1.2);
}

void playSpaces(VirtualMac& mac) {
    Participant& person = mac.participant();
    person.bringToFront("Google Chrome");
    mac.runFor(1.2);
    person.toggleFullScreenOf("Google Chrome");
    mac.runFor(3.2);
    person.swipe(VirtualSpaces::Direction::left);
    mac.runFor(4.2);
    person.swipe(VirtualSpaces::Direction::right);
    mac.runFor(4.2);
    person.toggleFullScreenOf("Google Chrome");
    mac.runFor(4.2);
}

void playDisplays(VirtualMac& mac) {
    mac.screens().plug({"Secondo", {{1440, 0}, {1280, 720}}});
    mac.runFor(4.2);
    mac.participant().moveWindowOf("Note", {1500, 200});
    mac.runFor(1.2);
    mac.participant().bringToFront("Note");
    mac.runFor(1.2);
    mac.participant().toggleFullScreenOf("Note");
    mac.runFor(4.2);
    mac.screens().unplug("Secondo");
    mac.runFor(4.2);
    mac.clock().closeLid(600);
    mac.runFor(1.2);
    mac.participant().quit("Note");
    mac.runFor(1.2);
    mac.participant().kill("Google Chrome");
    mac.runFor(4.2);
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (argc > 1) options.seed = std::strtoull(argv[1], nullptr, 10);
    VirtualMac mac(options);
    mac.launch([](Computer& computer) {
        record(computer, "standard output", [](std::string_view line) {
            std::cout << line << '\n';
            return std::cout.good();
        });
    });
    mac.runFor(1);
    playApplications(mac);
    playSpaces(mac);
    playDisplays(mac);
    return 0;
}
