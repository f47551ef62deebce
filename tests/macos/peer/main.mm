// The tests' own application on a Mac; ContractHost::peerExecutable() lists its arguments, and --records-keys makes it
// record the keys it receives. It leaves a file with what it received beside its bundle. It ends with its parent, or
// after two minutes.
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/macos/peer/PeerApplication.h"
#include "tests/macos/peer/PeerDelegate.h"

namespace {

// Each argument ends with a zero byte. Written under another name first, so that the file appears complete.
void leaveArguments(const std::filesystem::path& folder, const std::vector<std::string>& arguments) {
    const std::filesystem::path file = folder / ("arguments-" + std::to_string(getpid()));
    const std::filesystem::path unfinished = file.string() + ".new";
    {
        std::ofstream stream(unfinished);
        for (const std::string& argument : arguments) stream << argument << '\0';
    }
    std::filesystem::rename(unfinished, file);
}

void endWithParent(pid_t parent) {
    constexpr double lifetimeSeconds = 120;
    [NSTimer scheduledTimerWithTimeInterval:0.1
                                    repeats:YES
                                      block:^(NSTimer*) {
                                        if (getppid() != parent) std::_Exit(EXIT_SUCCESS);
                                      }];
    [NSTimer scheduledTimerWithTimeInterval:lifetimeSeconds
                                    repeats:NO
                                      block:^(NSTimer*) {
                                        std::_Exit(EXIT_SUCCESS);
                                      }];
}

}  // namespace

int main(int argc, char** argv) {
    // Read before anybody can see that this process has started, and end.
    const pid_t parent = getppid();
    // .../Google Chrome.app/Contents/MacOS/Google Chrome
    const std::filesystem::path bundle = std::filesystem::path(argv[0]).parent_path().parent_path().parent_path();
    const std::filesystem::path folder = bundle.parent_path();
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto options = vantrel::peer::PeerOptions::read(arguments);
    if (!options) {
        std::fputs("peer: a window is --window=TITLE,X,Y,WIDTH,HEIGHT\n", stderr);
        return 2;
    }
    if (options->ignoresTerminate) signal(SIGTERM, SIG_IGN);
    leaveArguments(folder, arguments);
    if (options->exitsAtOnce) return 0;

    @autoreleasepool {
        // The first caller decides the class of the shared application.
        PeerApplication* application = [PeerApplication sharedApplication];
        PeerDelegate* delegate = [[PeerDelegate alloc] init];
        [delegate setOptions:*options];
        application.delegate = delegate;
        if (std::find(arguments.begin(), arguments.end(), "--records-keys") != arguments.end()) {
            [delegate recordKeysInto:folder / ("keys-" + std::to_string(getpid()))];
        }
        [application setActivationPolicy:NSApplicationActivationPolicyRegular];
        endWithParent(parent);
        [application run];
    }
    return 0;
}
