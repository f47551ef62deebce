// A client with a keyboard tap and nothing else, which swallows Command-Q. Prints "ready" once it has its tap, and
// answers each byte on its standard input with one byte. Ends when its standard input ends.
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cstdio>

#include "platform/linux/guard/GuardSource.h"
#include "platform/linux/keyboard/LinuxKeyboardTaps.h"
#include "platform/linux/threads/MainThread.h"

namespace {

std::string_view commandQ(const vantrel::KeyEvent& event) noexcept {
    constexpr std::int64_t keyQ = 12;
    constexpr std::uint64_t command = 0x100000;
    const bool swallow =
        event.type == vantrel::KeyEventType::keyDown && event.keyCode == keyQ && (event.flags & command) != 0;
    return swallow ? "Cmd+Q" : std::string_view();
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    vantrel::linuxdesktop::MainThread mainThread;
    vantrel::linuxdesktop::GuardSource guards(mainThread);
    vantrel::linuxdesktop::LinuxKeyboardTaps taps(mainThread, guards);
    const auto tap = taps.create(commandQ, {});
    std::puts(tap ? "ready" : "refused");
    std::fflush(stdout);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [] {
        char byte = 0;
        if (read(STDIN_FILENO, &byte, 1) != 1) {
            QCoreApplication::quit();
            return;
        }
        std::puts("here");
        std::fflush(stdout);
    });
    return QCoreApplication::exec();
}
