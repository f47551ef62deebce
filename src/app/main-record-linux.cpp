#include <cstdio>
#include <cstdlib>

#include "platform/linux/LinuxComputer.h"
#include "platform/linux/system/StandardStreams.h"
#include "platform/portable/UnreadLines.h"
#include "record/RecordMain.h"

namespace {

// The file has every line already.
[[noreturn]] void endProcess() {
    vantrel::UnreadLines::endAll();
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}

}  // namespace

int main(int argc, char** argv) {
    constexpr int wrongUse = 2;
    vantrel::linuxdesktop::openMissingStandardStreams();
    if (argc != 2) {
        std::fputs("usage: vantrel-record FILE\n", stderr);
        return wrongUse;
    }
    auto reason = vantrel::linuxdesktop::NoComputer::noX11Display;
    const auto desktop = vantrel::linuxdesktop::LinuxComputer::create(endProcess, reason);
    if (!desktop) {
        std::fputs("vantrel-record: there is no X11 desktop to look at.\n", stderr);
        return EXIT_FAILURE;
    }
    return vantrel::recordMain(desktop->computer(), argv[1]);
}
