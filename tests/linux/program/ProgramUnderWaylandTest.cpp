#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "platform/linux/x11/X11Connection.h"
#include "tests/linux/program/ProgramMessages.h"
#include "tests/linux/program/ProgramRun.h"
#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {
namespace {

// A compositor's X server can be reached but is of no use.
TEST(ProgramUnderWayland, SaysThatItCannotRunThereThoughThereIsAnX11Display) {
    ASSERT_TRUE(X11Connection::open()) << "this test needs an X11 display: set DISPLAY";
    const char* display = std::getenv("DISPLAY");
    const char* authority = std::getenv("XAUTHORITY");
    const TemporaryFolder home;
    const ProgramRun refused = ProgramRun::of(
        VANTREL_PROGRAM, {"DISPLAY=" + std::string(display), "XAUTHORITY=" + std::string(authority ? authority : ""),
                          "XDG_SESSION_TYPE=wayland", "WAYLAND_DISPLAY=wayland-0", "HOME=" + home.path().string(),
                          "XDG_CONFIG_HOME=" + home.path().string()});
    EXPECT_EQ(refused.end, 1);
    EXPECT_EQ(refused.standardError, waylandMessage);
    EXPECT_EQ(refused.standardOutput, "");
}

}  // namespace
}  // namespace vantrel::linuxdesktop
