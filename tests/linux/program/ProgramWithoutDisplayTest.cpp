#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/linux/program/ProgramMessages.h"
#include "tests/linux/program/ProgramRun.h"
#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {
namespace {

class ProgramWithoutDisplay : public testing::Test {
  protected:
    // The client in an environment with only these variables and a home of its own.
    ProgramRun run(std::vector<std::string> environment, const std::vector<std::string>& arguments = {}) const {
        const auto isHome = [](const std::string& variable) { return variable.starts_with("HOME="); };
        if (std::none_of(environment.begin(), environment.end(), isHome)) {
            environment.push_back("HOME=" + home.path().string());
        }
        environment.push_back("XDG_CONFIG_HOME=" + home.path().string());
        return ProgramRun::of(VANTREL_PROGRAM, environment, arguments);
    }

    void expectRefusal(const std::vector<std::string>& environment, std::string_view message) const {
        const ProgramRun refused = run(environment);
        const std::string shown = testing::PrintToString(environment);
        EXPECT_EQ(refused.end, 1) << shown;
        EXPECT_EQ(refused.standardError, message) << shown;
        EXPECT_EQ(refused.standardOutput, "") << shown;
        EXPECT_TRUE(std::filesystem::is_empty(home.path())) << shown;
    }

    TemporaryFolder home;
};

TEST_F(ProgramWithoutDisplay, SaysThatItNeedsOne) {
    expectRefusal({}, noX11Message);
    expectRefusal({"DISPLAY="}, noX11Message);
    expectRefusal({"WAYLAND_DISPLAY="}, noX11Message);
}

TEST_F(ProgramWithoutDisplay, SaysSoAlsoWhereItsDisplayCannotBeReached) {
    for (const char* display : {":64321", "127.0.0.1:64321", "nonsense", "no-such-host.invalid:0"}) {
        expectRefusal({"DISPLAY=" + std::string(display)}, noX11Message);
    }
}

TEST_F(ProgramWithoutDisplay, SaysInAWaylandSessionThatItCannotRunThere) {
    expectRefusal({"WAYLAND_DISPLAY=wayland-0"}, waylandMessage);
    expectRefusal({"WAYLAND_DISPLAY=wayland-0", "XDG_SESSION_TYPE=wayland"}, waylandMessage);
    expectRefusal({"WAYLAND_DISPLAY=wayland-0", "DISPLAY=:64321"}, waylandMessage);
}

TEST_F(ProgramWithoutDisplay, RefusesARelativeHome) {
    expectRefusal({"HOME=casa"}, relativeHomeMessage);
    expectRefusal({"HOME=./casa", "DISPLAY=:64321"}, relativeHomeMessage);
}

// Whatever the environment asks of Qt, because Qt has not been started yet.
TEST_F(ProgramWithoutDisplay, DoesNotRunOnAnythingElseThanX11) {
    expectRefusal({"QT_QPA_PLATFORM=offscreen"}, noX11Message);
    expectRefusal({"QT_QPA_PLATFORM=wayland", "WAYLAND_DISPLAY=wayland-0"}, waylandMessage);
}

TEST_F(ProgramWithoutDisplay, AnswersItsOptionsAllTheSame) {
    const ProgramRun help = run({}, {"--help"});
    EXPECT_EQ(help.end, 0);
    EXPECT_TRUE(help.standardOutput.starts_with("Uso: vantrel ")) << help.standardOutput;
    EXPECT_EQ(help.standardError, "");
    const ProgramRun version = run({}, {"--version"});
    EXPECT_EQ(version.end, 0);
    EXPECT_EQ(version.standardOutput, "Vantrel 2.0-macOS\n");
    const ProgramRun unknown = run({}, {"--wrong"});
    EXPECT_EQ(unknown.end, 2);
    EXPECT_EQ(unknown.standardOutput, "");
    EXPECT_NE(unknown.standardError.find("--wrong"), std::string::npos) << unknown.standardError;
    EXPECT_TRUE(std::filesystem::is_empty(home.path()));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
