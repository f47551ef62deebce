// A client that holds a person: a keyboard tap that swallows Command-Q, a cover, and with a process as its argument
// that process's first window in full screen. Prints "ready" when all stands. On its standard input: '?' is answered
// with "here", 'r' raises the cover, 'h' hangs the main thread for twenty seconds, 'w' gives it a twentieth of a
// second's work. Ends when its standard input ends.
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <variant>
#include <vector>

#include "platform/linux/LinuxComputer.h"

namespace {

using namespace vantrel;

std::string_view commandQ(const KeyEvent& event) noexcept {
    constexpr std::int64_t keyQ = 12;
    constexpr std::uint64_t command = 0x100000;
    const bool swallow = event.type == KeyEventType::keyDown && event.keyCode == keyQ && (event.flags & command) != 0;
    return swallow ? "Cmd+Q" : std::string_view();
}

bool makeFullScreen(const Computer& computer, ProcessIdentifier process) {
    using Elements = std::vector<std::shared_ptr<AccessibilityElement>>;
    const auto answer = computer.accessibility.application(process)->attribute("AXWindows");
    const auto* value = std::get_if<AccessibilityValue>(&answer);
    const auto* windows = value != nullptr ? std::get_if<Elements>(value) : nullptr;
    return windows != nullptr && !windows->empty() &&
           windows->front()->setAttribute("AXFullScreen", true) == accessibilitySuccess;
}

void say(const char* line) {
    std::puts(line);
    std::fflush(stdout);
}

// Of processor time, however long that takes.
void work() {
    const std::clock_t end = std::clock() + CLOCKS_PER_SEC / 20;
    while (std::clock() < end) {
    }
}

void obey(char byte, Overlay& cover) {
    constexpr unsigned hang = 20;
    if (byte == '?') say("here");
    if (byte == 'r') cover.orderFrontRegardless();
    if (byte == 'h') sleep(hang);
    if (byte == 'w') work();
}

}  // namespace

int main(int argc, char** argv) {
    linuxdesktop::NoComputer reason{};
    const auto desktop = linuxdesktop::LinuxComputer::create({}, reason);
    if (!desktop) return 1;
    const Computer computer = desktop->computer();
    const auto tap = computer.keyboardTaps.create(commandQ, {});
    OverlayDescription description;
    description.frame = {{600, 100}, {200, 150}};
    description.level = 1000;
    const auto cover = computer.overlays.makeOverlay(description);
    cover->orderFrontRegardless();
    const bool fullScreen = argc < 2 || makeFullScreen(computer, std::atoi(argv[1]));
    say(tap && fullScreen ? "ready" : "refused");
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&cover] {
        char byte = 0;
        if (read(STDIN_FILENO, &byte, 1) != 1) return QCoreApplication::quit();
        obey(byte, *cover);
    });
    return QCoreApplication::exec();
}
