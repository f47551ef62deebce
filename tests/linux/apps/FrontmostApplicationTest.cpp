#include <unistd.h>

#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/support/PeerBundle.h"

namespace vantrel::linuxdesktop {
namespace {

class FrontmostApplicationTest : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        peers = std::make_unique<PeerBundle>(folder.path());
    }

    void TearDown() override {
        peers->endAll();
        DesktopTest::TearDown();
    }

    std::optional<ProcessIdentifier> frontmost() const {
        const auto application = computer->frontmostApplication.frontmostApplication();
        if (!application) return std::nullopt;
        return application->processIdentifier();
    }

    std::unique_ptr<PeerBundle> peers;
};

TEST_F(FrontmostApplicationTest, IsTheOneWhoseWindowHasTheFocusAndThisOneToo) {
    WindowDescription description;
    description.contentRect = {{100, 100}, {200, 150}};
    description.styleMask = windowTitled;
    const auto window = computer->windows.makeWindow(description, [](std::string_view) {});
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(waitUntil([this] { return frontmost() == getpid(); }));
    EXPECT_EQ(computer->frontmostApplication.frontmostApplication()->bundleIdentifier(), "biz.quorrin.vantrel");

    const auto result =
        computer->processLauncher.launch(peers->executable().string(), {"--window=Lezione,100,100,300,200"});
    const auto process = std::get<ProcessIdentifier>(result);
    EXPECT_TRUE(waitUntil([&] {
        const auto application = computer->runningApplications.withProcessIdentifier(process);
        return application && application->activate(ActivationOptions::none);
    }));
    EXPECT_TRUE(waitUntil([&] { return frontmost() == process; }));
    EXPECT_EQ(computer->frontmostApplication.frontmostApplication()->bundleIdentifier(), "com.google.Chrome");

    computer->application.activate();
    EXPECT_TRUE(waitUntil([this] { return frontmost() == getpid(); }));
}

TEST_F(FrontmostApplicationTest, IsNoneWhenNoWindowHasTheFocus) {
    EXPECT_TRUE(waitUntil([this] { return frontmost() == std::nullopt; }));
    const auto result =
        computer->processLauncher.launch(peers->executable().string(), {"--window=Lezione,100,100,300,200"});
    const auto process = std::get<ProcessIdentifier>(result);
    EXPECT_TRUE(waitUntil([&] { return frontmost() == process; }));
    computer->processLauncher.sendSignal(process, 9);
    EXPECT_TRUE(waitUntil([this] { return frontmost() == std::nullopt; }));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
