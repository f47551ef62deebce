#include <gtest/gtest.h>

#include <iostream>
#include <memory>

#include "platform/macos/MacComputer.h"
#include "platform/virtual/calls/CheckedComputer.h"
#include "rehearsal/playing/Player.h"
#include "tests/macos/standins/MacInUse.h"

namespace vantrel::standins {
namespace {

/// A client over the macOS platform that asks a question on a background thread.
rehearsal::Program clientOver(virtualmac::VirtualMac& mac) {
    const auto inUse = std::make_shared<MacInUse>(mac);
    return [inUse](const Computer&) {
        withPool([] {
            macos::MacComputer platform;
            virtualmac::CheckedComputer checked(standins::mac().engine(), platform.computer());
            const Computer& computer = checked.computer();
            computer.dispatch.userInitiatedQueue().async([&computer] {
                computer.log.print("before");
                computer.alerts.runModal({});
            });
            computer.application.run();
        })();
    };
}

// Without that detour it ends so, too.
TEST(WrongThreadDeathTest, TheTranscriptEndsWithTheCallOffTheMainThread) {
    rehearsal::Scenario scenario;
    scenario.until = 1;
    EXPECT_EXIT(rehearsal::play(scenario, std::cerr, {.make = clientOver}), testing::ExitedWithCode(1),
                "^    0.000  log          before\n"
                "    0.000  misuse       Alerts.runModal off the main thread\n$");
}

}  // namespace
}  // namespace vantrel::standins
