#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <thread>

#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/support/PeerBundle.h"

namespace vantrel::linuxdesktop {
namespace {

class ApplicationOpenerTest : public DesktopTest {
  protected:
    void TearDown() override {
        if (peers) peers->endAll();
        DesktopTest::TearDown();
    }

    void install() { peers = std::make_unique<PeerBundle>(folder.path()); }

    // An application whose executable is a script.
    std::string installScript(const std::string& name, const std::string& text) const {
        const auto bundle = folder.path() / "scripts" / (name + ".app");
        const auto executable = bundle / "Contents/MacOS" / name;
        std::filesystem::create_directories(executable.parent_path());
        writeContents(executable, text);
        std::filesystem::permissions(executable, std::filesystem::perms::owner_all);
        return bundle.string();
    }

    void open(const std::string& application, bool activates = true) {
        const auto encoded = computer->urls.addingPercentEncodingForQuery(application);
        computer->applicationOpener.open(addresses, URL{"file://" + encoded.value()}, activates,
                                         [this](ApplicationOpener::Result result) {
                                             ++calls;
                                             onMainThread = computer->threads.isMainThread();
                                             const std::lock_guard lock(mutex);
                                             answer = std::move(result);
                                         });
    }

    std::optional<ApplicationOpener::Result> answered() {
        EXPECT_TRUE(waitUntil([this] {
            const std::lock_guard lock(mutex);
            return answer.has_value();
        }));
        const std::lock_guard lock(mutex);
        return answer;
    }

    std::string failure() {
        const auto result = answered();
        const auto* error = result ? std::get_if<PlatformError>(&*result) : nullptr;
        return error != nullptr ? error->localizedDescription : "(opened)";
    }

    std::shared_ptr<RunningApplication> opened() {
        const auto result = answered();
        const auto* application = result ? std::get_if<std::shared_ptr<RunningApplication>>(&*result) : nullptr;
        EXPECT_NE(application, nullptr);
        return application != nullptr ? *application : nullptr;
    }

    const std::vector<URL> addresses{{"https://meet.example/a?b='c'&d=$(e)"}, {"https://meet.example/f%20g"}};
    std::unique_ptr<PeerBundle> peers;
    std::atomic<int> calls = 0;
    std::atomic<bool> onMainThread = false;
    std::mutex mutex;
    std::optional<ApplicationOpener::Result> answer;
};

TEST_F(ApplicationOpenerTest, HandsTheAddressesToTheExecutableInTheFolder) {
    install();
    open(peers->folder().string());
    const auto application = opened();
    ASSERT_TRUE(application);
    EXPECT_FALSE(onMainThread);
    EXPECT_EQ(application->bundleIdentifier(), "com.google.Chrome");
    EXPECT_TRUE(waitUntil([&] { return peers->argumentsReceived(application->processIdentifier()).has_value(); }));
    EXPECT_EQ(peers->argumentsReceived(application->processIdentifier()),
              (std::vector{addresses[0].absoluteString, addresses[1].absoluteString}));
    EXPECT_EQ(calls, 1);
}

TEST_F(ApplicationOpenerTest, AnswersWithTheRunningInstanceThatASecondOneHandsItsAddressesTo) {
    install();
    const auto result = computer->processLauncher.launch(peers->executable().string(), {});
    const auto running = std::get<ProcessIdentifier>(result);
    open(installScript("Google Chrome", "#!/bin/sh\nexit 0\n"));
    const auto application = opened();
    ASSERT_TRUE(application);
    EXPECT_EQ(application->processIdentifier(), running);
}

TEST_F(ApplicationOpenerTest, AnswersWithoutAnApplicationWhenItHasEndedAtOnce) {
    open(installScript("Safari", "#!/bin/sh\nexit 0\n"));
    EXPECT_FALSE(opened());
}

TEST_F(ApplicationOpenerTest, SaysInItalianWhyNothingWasOpened) {
    open("/Applications/Nessuno.app");
    EXPECT_EQ(failure(), "Impossibile trovare l’applicazione “Nessuno”.");
    answer.reset();
    const auto empty = folder.path() / "Vuoto.app";
    std::filesystem::create_directories(empty);
    open(empty.string());
    EXPECT_EQ(failure(), "Impossibile aprire l’applicazione “Vuoto”. Il file “Vuoto” non esiste.");
    answer.reset();
    const auto forbidden = installScript("Chiuso", "#!/bin/sh\n");
    std::filesystem::permissions(forbidden + "/Contents/MacOS/Chiuso", std::filesystem::perms::owner_read);
    open(forbidden);
    EXPECT_EQ(failure(),
              "Impossibile aprire l’applicazione “Chiuso”. Non hai i permessi per eseguire il file “Chiuso”.");
    answer.reset();
    open("/etc/hostname");
    EXPECT_EQ(failure(), "“file:///etc/hostname” non è un’applicazione.");
    EXPECT_EQ(calls, 4);
}

TEST_F(ApplicationOpenerTest, HasAnsweredOnceWhenTheComputerHasGone) {
    install();
    // It has no window, so the opener waits for a while.
    open(peers->folder().string());
    EXPECT_TRUE(
        waitUntil([this] { return !computer->runningApplications.withBundleIdentifier("com.google.Chrome").empty(); }));
    EXPECT_EQ(calls, 0);
    const auto start = std::chrono::steady_clock::now();
    desktop.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1500));
    EXPECT_EQ(calls, 1);
    // A handle must not outlive the computer.
    answer.reset();
}

}  // namespace
}  // namespace vantrel::linuxdesktop
