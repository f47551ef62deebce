#include <cstdio>

#include "platform/macos/MacComputer.h"
#include "record/RecordMain.h"

int main(int argc, char** argv) {
    constexpr int wrongUse = 2;
    if (argc != 2) {
        std::fputs("usage: vantrel-record FILE\n", stderr);
        return wrongUse;
    }
    @autoreleasepool {
        vantrel::macos::MacComputer mac;
        return vantrel::recordMain(mac.computer(), argv[1]);
    }
}
