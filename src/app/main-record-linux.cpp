#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/linux/LinuxComputer.h"
#include "platform/linux/system/ProcessEnd.h"
#include "platform/linux/system/StandardStreams.h"
#include "record/RecordMain.h"

int main(int argc, char** argv) {
    constexpr int wrongUse = 2;
    vantrel::linuxdesktop::openMissingStandardStreams();
    const bool help = argc == 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0);
    if (argc != 2 || help) {
        std::fputs("usage: vantrel-record FILE\n", help ? stdout : stderr);
        return help ? EXIT_SUCCESS : wrongUse;
    }
    auto reason = vantrel::linuxdesktop::NoComputer::noX11Display;
    const auto desktop = vantrel::linuxdesktop::LinuxComputer::create(vantrel::linuxdesktop::endProcess, reason);
    if (!desktop) {
        std::fputs("vantrel-record: there is no X11 desktop to look at.\n", stderr);
        return EXIT_FAILURE;
    }
    return vantrel::recordMain(desktop->computer(), argv[1]);
}
