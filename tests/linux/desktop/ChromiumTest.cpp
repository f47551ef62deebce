#include <signal.h>
#include <unistd.h>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Desktops.h"
#include "tests/linux/support/DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

using Element = std::shared_ptr<AccessibilityElement>;

/// A real browser with a page of its own, seen through the client's platform.
class ChromiumTest : public DesktopTest {
  protected:
    static constexpr double patience = 30;

    void SetUp() override {
        DesktopTest::SetUp();
        ASSERT_TRUE(computer->files.fileExists("/usr/bin/chromium")) << "this test needs Debian's chromium";
        server = X11Connection::open();
        ASSERT_TRUE(server);
        const auto started = computer->processLauncher.launch(
            "/usr/bin/chromium",
            {"--no-sandbox", "--test-type", "--log-level=3", "--disable-gpu", "--disable-background-networking",
             "--disable-sync", "--disable-component-update", "--no-first-run", "--password-store=basic",
             "--user-data-dir=" + (folder.path() / "profile").string(), "--window-position=100,100",
             "--window-size=800,600", "--app=data:text/html,<title>Lezione di prova</title><h1>Ciao</h1>"});
        const auto* pid = std::get_if<ProcessIdentifier>(&started);
        ASSERT_TRUE(pid) << std::get<PlatformError>(started).localizedDescription;
        process = *pid;
        ASSERT_TRUE(waitUntil([this] { return entry().has_value(); }, patience));
    }

    void TearDown() override {
        if (process > 0 && !isGone()) {
            computer->processLauncher.sendSignal(process, SIGKILL);
            EXPECT_TRUE(waitUntil([this] { return isGone(); }));
        }
        DesktopTest::TearDown();
    }

    bool isGone() const { return computer->runningApplications.withProcessIdentifier(process) == nullptr; }

    std::optional<WindowEntry> entry() const {
        const auto list = computer->windowList.copy(WindowListOption::onScreenOnly);
        if (!list) return std::nullopt;
        for (const WindowEntry& entry : *list) {
            if (entry.ownerPID == process && entry.name == "Lezione di prova") return entry;
        }
        return std::nullopt;
    }

    template <typename Value>
    static std::optional<Value> read(const AccessibilityElement& element, std::string_view name) {
        const auto answer = element.attribute(name);
        const auto* value = std::get_if<AccessibilityValue>(&answer);
        if (value == nullptr || !std::holds_alternative<Value>(*value)) return std::nullopt;
        return std::get<Value>(*value);
    }

    Element window() const {
        const auto all = read<std::vector<Element>>(*computer->accessibility.application(process), "AXWindows");
        return all && all->size() == 1 ? all->front() : nullptr;
    }

    std::unique_ptr<X11Connection> server;
    ProcessIdentifier process = 0;
};

TEST_F(ChromiumTest, IsListedGoesFullScreenOnASpaceOfItsOwnAndCloses) {
    const auto listed = entry();
    EXPECT_EQ(listed->ownerName, "Google Chrome");
    EXPECT_EQ(listed->layer, 0);
    const Element element = window();
    ASSERT_TRUE(element);
    EXPECT_EQ(read<bool>(*element, "AXFullScreen"), false);
    EXPECT_EQ(element->setAttribute("AXPosition", Point{60, 80}), accessibilitySuccess);
    EXPECT_EQ(element->setAttribute("AXSize", Size{900, 700}), accessibilitySuccess);
    EXPECT_TRUE(waitUntil([&] {
        return read<Point>(*element, "AXPosition") == Point{60, 80} && read<Size>(*element, "AXSize") == Size{900, 700};
    }));

    X11Desktops desktops(*server);
    const auto count = desktops.count();
    const auto current = desktops.current();
    ASSERT_TRUE(count && current);
    int told = 0;
    const auto notices = computer->spaces.observeActiveSpaceDidChange([&told] { ++told; });
    const auto screen = computer->screens.mainScreen();
    ASSERT_TRUE(screen);
    for (int round = 1; round <= 2; ++round) {
        EXPECT_EQ(element->setAttribute("AXFullScreen", true), accessibilitySuccess);
        EXPECT_TRUE(waitUntil([&] {
            return read<bool>(*element, "AXFullScreen") == true && read<Size>(*element, "AXSize") == screen->frame.size;
        }));
        EXPECT_TRUE(waitUntil([&] { return entry().has_value() && desktops.current() == count; }));
        if (round == 2) break;
        EXPECT_EQ(element->setAttribute("AXFullScreen", false), accessibilitySuccess);
        EXPECT_TRUE(waitUntil([&] {
            return read<bool>(*element, "AXFullScreen") == false && read<Size>(*element, "AXSize") == Size{900, 700};
        }));
        EXPECT_TRUE(waitUntil([&] { return desktops.count() == count && desktops.current() == current; }));
    }
    turnFor(0.2);
    EXPECT_EQ(told, 3);

    const auto button = read<Element>(*element, "AXCloseButton");
    ASSERT_TRUE(button);
    EXPECT_EQ((*button)->performAction("AXPress"), accessibilitySuccess);
    EXPECT_TRUE(waitUntil([&] { return desktops.count() == count && desktops.current() == current; }));
    EXPECT_TRUE(waitUntil([this] { return isGone(); }, patience));
    EXPECT_TRUE(waitUntil([&told] { return told == 4; }));
}

TEST_F(ChromiumTest, LeavesNobodyOnAnEmptyDesktopWhenItIsKilled) {
    const Element element = window();
    ASSERT_TRUE(element);
    X11Desktops desktops(*server);
    const auto count = desktops.count();
    const auto current = desktops.current();
    EXPECT_EQ(element->setAttribute("AXFullScreen", true), accessibilitySuccess);
    ASSERT_TRUE(waitUntil([&] { return read<bool>(*element, "AXFullScreen") == true && desktops.current() == count; }));
    turnFor(0.5);
    EXPECT_TRUE(computer->processLauncher.sendSignal(process, SIGKILL));
    EXPECT_TRUE(waitUntil([&] { return desktops.count() == count && desktops.current() == current; }));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
