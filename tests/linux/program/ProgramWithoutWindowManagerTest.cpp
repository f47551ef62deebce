#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/x11/X11Connection.h"
#include "tests/linux/program/ProgramMessages.h"
#include "tests/linux/program/ProgramRun.h"
#include "tests/linux/support/TemporaryFolder.h"
#include "tests/linux/x11/DummyDisplay.h"

namespace vantrel::linuxdesktop {
namespace {

/// The program on an X server of its own, where only this test plays the window manager.
class ProgramWithoutWindowManager : public testing::Test {
  protected:
    void SetUp() override {
        before = std::getenv("DISPLAY") != nullptr ? std::getenv("DISPLAY") : "";
        ASSERT_FALSE(display.name().empty()) << "the X server with the dummy driver does not start:\n" << display.log();
        setenv("DISPLAY", display.name().c_str(), 1);
        connection = X11Connection::open();
        ASSERT_TRUE(connection);
    }

    void TearDown() override {
        connection.reset();
        setenv("DISPLAY", before.c_str(), 1);
    }

    ProgramRun run() const {
        return ProgramRun::of(VANTREL_PROGRAM,
                              {"DISPLAY=" + display.name(), "HOME=" + home.path().string(),
                               "XDG_CONFIG_HOME=" + home.path().string(), "XDG_RUNTIME_DIR=" + home.path().string()});
    }

    void set(xcb_window_t window, const char* name, xcb_atom_t type, const std::vector<std::uint32_t>& values) {
        xcb_change_property(connection->get(), XCB_PROP_MODE_REPLACE, window, connection->atom(name), type, 32,
                            static_cast<std::uint32_t>(values.size()), values.data());
    }

    // The window by which a window manager shows that it runs.
    xcb_window_t announce() {
        const xcb_window_t window = xcb_generate_id(connection->get());
        xcb_create_window(connection->get(), XCB_COPY_FROM_PARENT, window, connection->root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        set(window, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {window});
        set(connection->root(), "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {window});
        set(connection->root(), "_NET_SUPPORTED", XCB_ATOM_ATOM, {connection->atom("_NET_ACTIVE_WINDOW")});
        return window;
    }

    void sync() {
        const X11Reply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(connection->get(), xcb_get_input_focus(connection->get()), nullptr));
    }

    DummyDisplay display;
    TemporaryFolder home;
    std::string before;
    std::unique_ptr<X11Connection> connection;
};

TEST_F(ProgramWithoutWindowManager, SaysThatItNeedsOne) {
    const ProgramRun refused = run();
    EXPECT_EQ(refused.end, 1);
    EXPECT_EQ(refused.standardError, noWindowManagerMessage);
    EXPECT_EQ(refused.standardOutput, "");
}

TEST_F(ProgramWithoutWindowManager, SaysSoWhereOneHasLeftItsTraces) {
    const xcb_window_t window = announce();
    xcb_destroy_window(connection->get(), window);
    sync();
    const ProgramRun refused = run();
    EXPECT_EQ(refused.end, 1);
    EXPECT_EQ(refused.standardError, noWindowManagerMessage);
}

TEST_F(ProgramWithoutWindowManager, SaysThatItNeedsOneWithFullScreen) {
    announce();
    sync();
    const ProgramRun refused = run();
    EXPECT_EQ(refused.end, 1);
    EXPECT_EQ(refused.standardError, noFullScreenMessage);
    EXPECT_EQ(refused.standardOutput, "");
}

TEST_F(ProgramWithoutWindowManager, SaysThatItNeedsOneThatKeepsFullScreen) {
    const xcb_window_t window = announce();
    set(connection->root(), "_NET_SUPPORTED", XCB_ATOM_ATOM, {connection->atom("_NET_WM_STATE_FULLSCREEN")});
    const std::string_view name = "i3";
    xcb_change_property(connection->get(), XCB_PROP_MODE_REPLACE, window, connection->atom("_NET_WM_NAME"),
                        connection->atom("UTF8_STRING"), 8, static_cast<std::uint32_t>(name.size()), name.data());
    sync();
    const ProgramRun refused = run();
    EXPECT_EQ(refused.end, 1);
    EXPECT_EQ(refused.standardError, losesFullScreenMessage);
    EXPECT_EQ(refused.standardOutput, "");
}

}  // namespace
}  // namespace vantrel::linuxdesktop
