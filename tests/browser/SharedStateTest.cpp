#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "tests/browser/BrowserTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::SizeIs;
using Operation = virtualmac::AccessibilityFaults::Operation;

/// State that several threads use at once. The platform's own locks order its callers, so a missing guard shows only
/// without the baton, under ThreadSanitizer, and while the threads hardly call the platform.
class SharedState : public BrowserTest {
  protected:
    /// Full screen is refused, so the attempts continue.
    void makeForARefusingChrome() {
        installChrome();
        mac().accessibility().faults().fail(Operation::write, "AXFullScreen", accessibilityFailure);
        make(true);
    }
};

TEST_F(SharedState, IsReadOnAnotherThreadWhileTheBrowserIsLaunchedAndDriven) {
    makeForARefusingChrome();
    std::atomic<bool> stop = false;
    std::atomic<int> reads = 0;
    std::atomic<bool> contradicted = false;
    std::thread reader([&, &launcher = launcher()] {
        while (!stop) {
            const auto application = launcher.browserApp();
            const auto process = launcher.browserPID();
            // Both are set together and do not change.
            if (application && process != application->processIdentifier()) contradicted = true;
            if (launcher.isConfirmedFullscreen()) contradicted = true;
            reads.fetch_add(1, std::memory_order_relaxed);
        }
    });
    // Relaxed, so that it waits for the reader without being ordered after it.
    const auto waitForARead = [&reads] {
        const int before = reads.load(std::memory_order_relaxed);
        while (reads.load(std::memory_order_relaxed) < before + 2) std::this_thread::yield();
    };
    waitForARead();
    launch();
    for (int step = 0; step < 34; ++step) {
        mac().runFor(0.5);
        waitForARead();
    }
    stop = true;
    reader.join();
    EXPECT_FALSE(contradicted);
    EXPECT_NE(launcher().browserApp(), nullptr);
    EXPECT_THAT(lines("[FULLSCREEN] Tentativo"), SizeIs(6));
}

TEST_F(SharedState, LosesItsRetryByCancelsOnAnotherThreadWhileTheMainThreadCloses) {
    constexpr int cancels = 500;
    constexpr int closes = 100000;
    makeForARefusingChrome();
    launch();
    mac().runFor(4);
    ASSERT_EQ(mac().leftovers().timers, 1u);
    // The first close waits for the browser's end. All others find no process and do not call the platform.
    close();
    mac().onMain([this, &launcher = launcher()] {
        mac().inBackground([&launcher] {
            for (int time = 0; time < cancels; ++time) launcher.cancelFullscreenRetry();
        });
        for (int time = 0; time < closes; ++time) launcher.closeBrowser();
    });
    mac().runFor(60);
    EXPECT_EQ(count("[BROWSER] Fullscreen retry timer cancellato"), static_cast<std::size_t>(cancels));
    EXPECT_EQ(count("[BROWSER] Kill Google Chrome"), 1u);
    EXPECT_THAT(lines("[FULLSCREEN] Tentativo"), ElementsAre("[FULLSCREEN] Tentativo 1/8..."));
    EXPECT_EQ(launcher().browserPID(), std::nullopt);
    EXPECT_EQ(mac().leftovers().timers, 0u);
}

}  // namespace
}  // namespace vantrel
