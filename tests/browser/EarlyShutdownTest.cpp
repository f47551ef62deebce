#include <gmock/gmock.h>

#include "tests/browser/BrowserTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The browser is closed while its launch still runs. The launch knows the process from 2 seconds on, and requests the
/// first attempt at 3.
class EarlyShutdown : public BrowserTest {};

TEST_F(EarlyShutdown, BeforeTheProcessIsKnownDoesNothingAndTheLaunchGoesOn) {
    installChrome();
    make(true);
    launch();
    mac().runFor(1.9);
    forgetEvents();
    const double start = mac().now();
    close();
    EXPECT_THAT(events(), IsEmpty());
    EXPECT_EQ(mac().now(), start);
    mac().runFor(10);
    const auto process = launcher().browserPID().value_or(0);
    EXPECT_THAT(lines("["), ElementsAre("[BROWSER] Google Chrome PID (new): " + std::to_string(process),
                                        "[FULLSCREEN] Tentativo 1/8...", "[FULLSCREEN] ✅ Fullscreen attivato via AX",
                                        "[MONITOR] Fullscreen confermato"));
    EXPECT_TRUE(isRunning(process));
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
}

TEST_F(EarlyShutdown, OnceTheProcessIsKnownEndsItAndTheFirstAttemptFindsNone) {
    installChrome();
    for (const double moment : {2.1, 2.9}) {
        SCOPED_TRACE(moment);
        forgetEvents();
        make(true);
        launch();
        mac().runFor(moment);
        const auto process = launcher().browserPID().value_or(0);
        ASSERT_TRUE(isRunning(process));
        forgetEvents();
        close();
        EXPECT_FALSE(isRunning(process));
        mac().runFor(30);
        EXPECT_THAT(lines("["), ElementsAre("[BROWSER] Kill Google Chrome", "[FULLSCREEN] Tentativo 1/8..."));
        EXPECT_THAT(events(ProcessEvent::started), IsEmpty());
        EXPECT_THAT(events(ApplicationEvent::forceTerminate), IsEmpty());
        EXPECT_EQ(launcher().browserPID(), std::nullopt);
        EXPECT_EQ(launcher().browserApp(), nullptr);
        EXPECT_FALSE(launcher().isConfirmedFullscreen());
        EXPECT_FALSE(monitor().confirmed);
        EXPECT_EQ(mac().leftovers().timers, 0u);
        release();
    }
}

}  // namespace
}  // namespace vantrel
