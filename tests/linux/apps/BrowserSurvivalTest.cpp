#include <stdlib.h>

#include <atomic>
#include <thread>

#include "browser/BrowserLauncher.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/support/PeerBundle.h"

namespace vantrel::linuxdesktop {
namespace {

/// The launcher with a browser that outlives its windows, unlike Chromium here: the tests' own application.
class BrowserSurvivalTest : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (!computer) return;
        home = getenv("HOME");
        setenv("HOME", folder.path().c_str(), 1);
        peers = std::make_unique<PeerBundle>(folder.path() / "Applications");
        launcher = std::make_shared<BrowserLauncher>(BrowserLauncher::Dependencies{
            computer->files, computer->processLauncher, computer->runningApplications, computer->applicationOpener,
            computer->windowList, computer->accessibility, computer->screens, computer->urls, computer->dispatch,
            computer->mainRunLoop, computer->threads, computer->clock, computer->log});
    }

    void TearDown() override {
        launcher.reset();
        if (peers) peers->endAll();
        setenv("HOME", home.c_str(), 1);
        DesktopTest::TearDown();
    }

    ProcessIdentifier start(const std::vector<std::string>& arguments) {
        const auto started = computer->processLauncher.launch(peers->executable().string(), arguments);
        EXPECT_TRUE(std::holds_alternative<ProcessIdentifier>(started));
        return std::get<ProcessIdentifier>(started);
    }

    // On another thread, like the session's queue, while the main thread's event loop turns.
    void launch() {
        std::atomic<bool> done = false;
        std::thread thread([&] {
            launcher->launch("https://meet.example.org/lezione");
            done = true;
        });
        EXPECT_TRUE(waitUntil([&done] { return done.load(); }, 20));
        thread.join();
        EXPECT_TRUE(waitUntil([this] { return launcher->isConfirmedFullscreen(); }));
    }

    std::size_t windowsOf(ProcessIdentifier process) const {
        std::size_t count = 0;
        for (const auto& entry :
             computer->windowList.copy(WindowListOption::all).value_or(std::vector<WindowEntry>())) {
            if (entry.ownerPID == process) ++count;
        }
        return count;
    }

    std::string home;
    std::unique_ptr<PeerBundle> peers;
    std::shared_ptr<BrowserLauncher> launcher;
};

TEST_F(BrowserSurvivalTest, ABrowserThatWasThereBeforeLosesItsWindowsAndLivesOn) {
    const ProcessIdentifier browser = start({"--window=Posta,100,100,500,400", "--window=Lezione,150,150,500,400"});
    ASSERT_TRUE(waitUntil([&] { return windowsOf(browser) == 2; }));
    launch();
    EXPECT_EQ(launcher->browserPID(), browser);
    EXPECT_TRUE(launcher->wasPreExisting());

    launcher->closeBrowser();
    EXPECT_EQ(launcher->browserPID(), std::nullopt);
    EXPECT_TRUE(waitUntil([&] { return windowsOf(browser) == 0; }));
    // Longer than the delay between asking the windows to close and sending a signal.
    turnFor(2);
    const auto application = computer->runningApplications.withProcessIdentifier(browser);
    ASSERT_TRUE(application) << "it was signalled";
    EXPECT_FALSE(application->isTerminated());
}

}  // namespace
}  // namespace vantrel::linuxdesktop
