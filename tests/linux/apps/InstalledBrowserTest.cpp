#include <signal.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>

#include "browser/BrowserLauncher.h"
#include "platform/linux/apps/ProcessTable.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/support/InstalledCommands.h"

namespace vantrel::linuxdesktop {
namespace {

const std::string chrome = "/Applications/Google Chrome.app/Contents/MacOS/Google Chrome";

/// A browser that the system has installed, and no link to it where macOS has browsers.
class InstalledBrowserTest : public DesktopTest {
  protected:
    void TearDown() override {
        launcher.reset();
        if (process > 0 && ProcessTable::startTime(process)) {
            computer->processLauncher.sendSignal(process, SIGKILL);
            EXPECT_TRUE(waitUntil([this] { return !ProcessTable::startTime(process); }));
        }
        DesktopTest::TearDown();
    }

    // The tests' own application, which a script with another name becomes after a while.
    void installPeer(const std::string& command) const {
        const auto peer = folder.path() / "lib/other";
        std::filesystem::create_directories(peer.parent_path());
        std::filesystem::copy_file(VANTREL_PEER, peer, std::filesystem::copy_options::skip_existing);
        commands.install(command, "sleep 0.3\nexec " + peer.string() + " --window=Lezione,100,100,300,200\n");
    }

    bool hasWindow() const {
        const auto windows = computer->windowList.copy(WindowListOption::all).value_or(std::vector<WindowEntry>());
        return std::any_of(windows.begin(), windows.end(),
                           [this](const WindowEntry& window) { return window.ownerPID == process; });
    }

    // On another thread, like the session's queue, while the main thread's event loop turns.
    void launchMeeting() {
        launcher = std::make_shared<BrowserLauncher>(BrowserLauncher::Dependencies{
            computer->files, computer->processLauncher, computer->runningApplications, computer->applicationOpener,
            computer->windowList, computer->accessibility, computer->screens, computer->urls, computer->dispatch,
            computer->mainRunLoop, computer->threads, computer->clock, computer->log});
        std::atomic<bool> done = false;
        std::thread thread([&] {
            // Nothing answers there: the browser shows a page of its own.
            launcher->launch("http://127.0.0.1:9/lezione");
            done = true;
        });
        EXPECT_TRUE(waitUntil([&done] { return done.load(); }, 20));
        thread.join();
        EXPECT_TRUE(waitUntil([this] { return launcher->isConfirmedFullscreen(); }, 30));
    }

    InstalledCommands commands{folder.path()};
    std::shared_ptr<BrowserLauncher> launcher;
    ProcessIdentifier process = 0;
};

TEST_F(InstalledBrowserTest, IsTheApplicationOfMacOSFromItsStartWhateverItsScriptBecomes) {
    installPeer("google-chrome");
    ASSERT_TRUE(computer->files.fileExists(chrome));
    const auto started = computer->processLauncher.launch(chrome, {});
    ASSERT_TRUE(std::holds_alternative<ProcessIdentifier>(started));
    process = std::get<ProcessIdentifier>(started);
    EXPECT_TRUE(waitUntil([this] {
        const auto all = computer->runningApplications.withBundleIdentifier("com.google.Chrome");
        const auto one = computer->runningApplications.withProcessIdentifier(process);
        EXPECT_TRUE(all.size() == 1 && all.front()->processIdentifier() == process);
        EXPECT_TRUE(one && one->bundleIdentifier() == "com.google.Chrome" && one->localizedName() == "Google Chrome");
        return HasFailure() || hasWindow();
    }));
}

TEST_F(InstalledBrowserTest, OpensAddressesAsTheApplicationOfMacOS) {
    installPeer("microsoft-edge");
    std::atomic<bool> answered = false;
    ApplicationOpener::Result result;
    computer->applicationOpener.open({URL{"https://meet.example/a"}}, URL{"file:///Applications/Microsoft%20Edge.app"},
                                     true, [&](auto answer) {
                                         result = std::move(answer);
                                         answered = true;
                                     });
    ASSERT_TRUE(waitUntil([&answered] { return answered.load(); }));
    const auto* application = std::get_if<std::shared_ptr<RunningApplication>>(&result);
    ASSERT_TRUE(application != nullptr && *application);
    process = (*application)->processIdentifier();
    EXPECT_EQ((*application)->bundleIdentifier(), "com.microsoft.edgemac");
    EXPECT_EQ((*application)->localizedName(), "Microsoft Edge");
}

TEST_F(InstalledBrowserTest, ARealOneTakesTheMeetingToFullScreenAndIsClosed) {
    ASSERT_TRUE(computer->files.fileExists("/usr/bin/chromium")) << "this test needs Debian's chromium";
    commands.install("google-chrome",
                     "exec /usr/bin/chromium --no-sandbox --test-type --log-level=3 --disable-gpu --no-proxy-server "
                     "--disable-background-networking --disable-sync --disable-component-update "
                     "--password-store=basic --user-data-dir=" +
                         (folder.path() / "profile").string() + " \"$@\"\n");
    launchMeeting();
    EXPECT_EQ(launcher->detectedBrowser(), SupportedBrowser::chrome);
    EXPECT_FALSE(launcher->wasPreExisting());
    const auto application = launcher->browserApp();
    ASSERT_TRUE(application);
    process = application->processIdentifier();
    EXPECT_EQ(application->bundleIdentifier(), "com.google.Chrome");
    EXPECT_EQ(ProcessTable::find(process)->executablePath, "/usr/lib/chromium/chromium");
    EXPECT_TRUE(hasWindow());
    launcher->closeBrowser();
    EXPECT_TRUE(waitUntil([&] { return application->isTerminated(); }));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
