#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/macos/MacComputer.h"
#include "record/RecordMain.h"

int main(int argc, char** argv) {
    constexpr int wrongUse = 2;
    const bool help = argc == 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0);
    if (argc != 2 || help) {
        std::fputs("usage: vantrel-record FILE\n", help ? stdout : stderr);
        return help ? EXIT_SUCCESS : wrongUse;
    }
    @autoreleasepool {
        vantrel::macos::MacComputer mac;
        return vantrel::recordMain(mac.computer(), argv[1]);
    }
}
