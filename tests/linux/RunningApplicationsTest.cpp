#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

class RunningApplicationsTest : public DesktopTest {
  protected:
    void TearDown() override {
        for (const pid_t child : children) {
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
        }
        DesktopTest::TearDown();
    }

    // A process that runs under another executable's name.
    pid_t start(const std::string& name, const char* display) {
        const std::filesystem::path program = folder.path() / name;
        std::filesystem::create_directories(program.parent_path());
        std::filesystem::copy_file("/bin/sleep", program, std::filesystem::copy_options::skip_existing);
        const pid_t child = fork();
        if (child == 0) {
            setenv("DISPLAY", display, 1);
            execl(program.c_str(), program.c_str(), "60", nullptr);
            _exit(1);
        }
        children.push_back(child);
        // Until the new program stands in the child's place.
        for (int attempt = 0; attempt < 1000; ++attempt) {
            std::error_code error;
            if (std::filesystem::read_symlink("/proc/" + std::to_string(child) + "/exe", error) == program) break;
            usleep(1000);
        }
        return child;
    }

    std::vector<ProcessIdentifier> processes(std::string_view identifier) const {
        std::vector<ProcessIdentifier> found;
        for (const auto& application : computer->runningApplications.withBundleIdentifier(identifier)) {
            found.push_back(application->processIdentifier());
        }
        return found;
    }

    bool lists(std::string_view identifier, pid_t process) const {
        const auto found = processes(identifier);
        return std::find(found.begin(), found.end(), process) != found.end();
    }

    std::string thisDisplay() const { return getenv("DISPLAY"); }

    std::vector<pid_t> children;
};

TEST_F(RunningApplicationsTest, CountsThisProcessUnderTheBundlesIdentifier) {
    EXPECT_TRUE(lists("biz.quorrin.vantrel", getpid()));
    EXPECT_EQ(computer->mainBundle.identifier(), "biz.quorrin.vantrel");
}

TEST_F(RunningApplicationsTest, CountsASecondCopyOnThisDisplayOnly) {
    const pid_t same = start("vantrel", thisDisplay().c_str());
    const pid_t sameWrittenOtherwise = start("copy/vantrel", ("unix" + thisDisplay()).c_str());
    const pid_t other = start("other/vantrel", ":9999");
    EXPECT_TRUE(lists("biz.quorrin.vantrel", same));
    EXPECT_TRUE(lists("biz.quorrin.vantrel", sameWrittenOtherwise));
    EXPECT_FALSE(lists("biz.quorrin.vantrel", other));
}

TEST_F(RunningApplicationsTest, KnowsABrowserByItsBundleFolder) {
    const pid_t browser = start("Google Chrome.app/Contents/MacOS/Google Chrome", thisDisplay().c_str());
    EXPECT_TRUE(lists("com.google.Chrome", browser));
    const auto application = computer->runningApplications.withProcessIdentifier(browser);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->bundleIdentifier(), "com.google.Chrome");
    EXPECT_EQ(application->localizedName(), "Google Chrome");
}

TEST_F(RunningApplicationsTest, AnswersFreshWhenAProcessHasGoneEvenAsAZombie) {
    const pid_t browser = start("chromium", thisDisplay().c_str());
    const auto application = computer->runningApplications.withProcessIdentifier(browser);
    ASSERT_TRUE(application);
    EXPECT_FALSE(application->isTerminated());
    EXPECT_TRUE(application->terminate());
    siginfo_t info{};
    ASSERT_EQ(waitid(P_PID, static_cast<id_t>(browser), &info, WEXITED | WNOWAIT), 0);
    EXPECT_EQ(info.si_status, SIGTERM);
    EXPECT_TRUE(application->isTerminated());
    EXPECT_FALSE(application->terminate());
    EXPECT_FALSE(application->forceTerminate());
    EXPECT_FALSE(application->activate(ActivationOptions::none));
    EXPECT_FALSE(computer->runningApplications.withProcessIdentifier(browser));
    EXPECT_FALSE(lists("com.google.Chrome", browser));
}

TEST_F(RunningApplicationsTest, KillsWhatIsForced) {
    const pid_t browser = start("firefox-esr", thisDisplay().c_str());
    EXPECT_TRUE(computer->runningApplications.withProcessIdentifier(browser)->forceTerminate());
    siginfo_t info{};
    ASSERT_EQ(waitid(P_PID, static_cast<id_t>(browser), &info, WEXITED | WNOWAIT), 0);
    EXPECT_EQ(info.si_status, SIGKILL);
}

TEST_F(RunningApplicationsTest, BringsAWindowOfTheApplicationToTheFront) {
    WindowDescription description;
    description.contentRect = {{100, 100}, {200, 150}};
    description.styleMask = windowTitled;
    const auto own = computer->runningApplications.withProcessIdentifier(getpid());
    ASSERT_TRUE(own);
    EXPECT_FALSE(own->activate(ActivationOptions::none)) << "there is no window yet";
    const auto window = computer->windows.makeWindow(description, [](std::string_view) {});
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(waitUntil([&own] { return own->activate(ActivationOptions::none); }));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
