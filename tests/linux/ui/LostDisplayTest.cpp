#include <unistd.h>

#include <memory>
#include <string>

#include "tests/linux/keyboard/KeyboardClientProcess.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/support/StoppedTerminal.h"
#include "tests/linux/x11/ServerView.h"

namespace vantrel::linuxdesktop {
namespace {

/// A client in a session whose connection to the X server a person ends, as xkill does.
class LostDisplayTest : public DesktopTest {
  protected:
    void start(const std::string& argument = {}) {
        client = std::make_unique<KeyboardClientProcess>(VANTREL_SESSION_CLIENT, argument);
        ASSERT_EQ(client->line(), "ready");
        ASSERT_TRUE(waitUntil([&] { return !view.named("Vantrel overlay").empty(); }));
    }

    void killTheCover() {
        const auto covers = view.named("Vantrel overlay");
        ASSERT_FALSE(covers.empty());
        const auto server = X11Connection::open();
        const auto cookie = xcb_kill_client_checked(server->get(), covers.front().window);
        const X11Reply<xcb_generic_error_t> refused(xcb_request_check(server->get(), cookie));
        ASSERT_FALSE(refused);
    }

    ServerView view;
    std::unique_ptr<KeyboardClientProcess> client;
};

TEST_F(LostDisplayTest, EndsTheSessionAsTheRulesSayBeforeTheProcess) {
    start();
    killTheCover();
    ASSERT_EQ(client->line(), "session over");
    ASSERT_EQ(client->line(), "let go");
    EXPECT_EQ(client->end(), 3);
    EXPECT_TRUE(view.named("Vantrel overlay").empty());
}

// Qt says there why the connection is gone.
TEST_F(LostDisplayTest, EndsTheSessionThoughStandardErrorIsATerminalThatIsStopped) {
    const StoppedTerminal terminal;
    const FileDescriptor before(dup(STDERR_FILENO));
    dup2(terminal.get(), STDERR_FILENO);
    start();
    dup2(before.get(), STDERR_FILENO);
    killTheCover();
    ASSERT_EQ(client->line(), "session over");
    ASSERT_EQ(client->line(), "let go");
    EXPECT_EQ(client->end(), 3);
}

TEST_F(LostDisplayTest, HoldsNoSessionUpWithAQuestionThatNobodySees) {
    start("alert");
    killTheCover();
    ASSERT_EQ(client->line(), "session over");
    ASSERT_EQ(client->line(), "let go");
    EXPECT_EQ(client->end(), 3);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
