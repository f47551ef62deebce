#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "platform/linux/apps/ProcessTable.h"
#include "tests/linux/support/DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

class RunningApplicationsTest : public DesktopTest {
  protected:
    void TearDown() override {
        for (const pid_t child : children) {
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
        }
        for (const ProcessIdentifier process : started) {
            computer->processLauncher.sendSignal(process, SIGKILL);
            EXPECT_TRUE(waitUntil([process] { return !ProcessTable::startTime(process); }));
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
        // Until the new program has replaced the child and all of its facts can be read.
        for (int attempt = 0; attempt < 1000; ++attempt) {
            const auto entry = ProcessTable::find(child);
            if (entry && entry->executablePath == program && !entry->display.empty()) break;
            usleep(1000);
        }
        return child;
    }

    // The tests' own application under another name.
    ProcessIdentifier startPeer(const std::string& name, const std::vector<std::string>& arguments) {
        const std::filesystem::path program = folder.path() / name;
        std::filesystem::create_directories(program.parent_path());
        std::filesystem::copy_file(VANTREL_PEER, program, std::filesystem::copy_options::skip_existing);
        const auto result = computer->processLauncher.launch(program.string(), arguments);
        EXPECT_TRUE(std::holds_alternative<ProcessIdentifier>(result));
        started.push_back(std::get<ProcessIdentifier>(result));
        return started.back();
    }

    std::filesystem::path writeScript(const std::string& name, const std::string& text) const {
        const auto path = folder.path() / name;
        std::filesystem::create_directories(path.parent_path());
        writeContents(path, "#!/bin/sh\n" + text);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }

    std::vector<WindowEntry> windowsOf(ProcessIdentifier process) const {
        auto windows = computer->windowList.copy(WindowListOption::all).value_or(std::vector<WindowEntry>());
        std::erase_if(windows, [process](const WindowEntry& window) { return window.ownerPID != process; });
        return windows;
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
    std::vector<ProcessIdentifier> started;
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

// Chromium writes its title over its environment, and on a busy computer shows its first window much later.
TEST_F(RunningApplicationsTest, KnowsWhatTheClientHasStartedThoughItsEnvironmentIsGone) {
    const auto script = writeScript("Google Chrome.app/Contents/MacOS/Google Chrome", "exec env -i sleep 600\n");
    const auto result = computer->processLauncher.launch(script.string(), {});
    ASSERT_TRUE(std::holds_alternative<ProcessIdentifier>(result));
    const ProcessIdentifier process = std::get<ProcessIdentifier>(result);
    started.push_back(process);
    ASSERT_TRUE(waitUntil([process] {
        const auto entry = ProcessTable::find(process);
        return entry && entry->executablePath.ends_with("/sleep");
    }));
    EXPECT_TRUE(lists("com.google.Chrome", process));
    const auto application = computer->runningApplications.withProcessIdentifier(process);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->localizedName(), "Google Chrome");
}

TEST_F(RunningApplicationsTest, AFileNameThatIsNoUTF8IsHandedOutAsUTF8) {
    const ProcessIdentifier named = startPeer("calc\xffolo", {"--window=Lezione,100,100,300,200"});
    ASSERT_TRUE(waitUntil([&] { return !windowsOf(named).empty(); }));
    EXPECT_EQ(computer->runningApplications.withProcessIdentifier(named)->localizedName(), "calc\uFFFDolo");
    EXPECT_EQ(windowsOf(named).front().ownerName, "calc\uFFFDolo");
    const auto missing = computer->processLauncher.launch(folder.path().string() + "/manca\xff", {});
    EXPECT_EQ(std::get<PlatformError>(missing).localizedDescription, "Il file “manca\uFFFD” non esiste.");
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

TEST_F(RunningApplicationsTest, KnowsAWrapperScriptBeforeAndAfterItBecomesTheBrowser) {
    const auto browser = folder.path() / "usr/lib/chromium/chromium";
    std::filesystem::create_directories(browser.parent_path());
    std::filesystem::copy_file("/bin/sleep", browser);
    const auto wrapper = folder.path() / "Applications/Google Chrome.app/Contents/MacOS/Google Chrome";
    std::filesystem::create_directories(wrapper.parent_path());
    writeContents(wrapper, "#!/bin/sh\nsleep 0.3\nexec " + browser.string() + " \"$@\"\n");
    std::filesystem::permissions(wrapper, std::filesystem::perms::owner_all);
    const auto result = computer->processLauncher.launch(wrapper.string(), {"60"});
    ASSERT_TRUE(std::holds_alternative<ProcessIdentifier>(result));
    const auto process = std::get<ProcessIdentifier>(result);
    const auto executable = [process] {
        std::error_code error;
        return std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/exe", error);
    };
    const auto before = computer->runningApplications.withProcessIdentifier(process);
    EXPECT_NE(executable(), browser);
    ASSERT_TRUE(before);
    EXPECT_EQ(before->bundleIdentifier(), "com.google.Chrome");
    EXPECT_TRUE(waitUntil([&] { return executable() == browser; }));
    EXPECT_FALSE(before->isTerminated());
    const auto after = computer->runningApplications.withProcessIdentifier(process);
    ASSERT_TRUE(after);
    EXPECT_EQ(after->bundleIdentifier(), "com.google.Chrome");
    EXPECT_EQ(after->localizedName(), "Google Chrome");
    EXPECT_EQ(processes("com.google.Chrome"), std::vector{process});
    EXPECT_TRUE(after->forceTerminate());
    EXPECT_TRUE(waitUntil([&] { return after->isTerminated(); }));
}

// Debian's chromium is a script as well, and a bundle's script may run others before.
TEST_F(RunningApplicationsTest, ABundleIsTheSameApplicationHoweverLongItsScriptsTakeToBecomeTheBrowser) {
    const auto browser = folder.path() / "usr/lib/chromium/chromium";
    std::filesystem::create_directories(browser.parent_path());
    std::filesystem::copy_file(VANTREL_PEER, browser);
    for (const std::string wait : {"0", "2.5", "10"}) {
        const auto preparing =
            writeScript("prepare-" + wait, "sleep " + wait + "\nexec " + browser.string() + " \"$@\"\n");
        const auto wrapper = writeScript("Applications/" + wait + "/Google Chrome.app/Contents/MacOS/Google Chrome",
                                         "exec " + preparing.string() + " \"$@\"\n");
        const auto result = computer->processLauncher.launch(wrapper.string(), {"--window=Lezione,100,100,300,200"});
        ASSERT_TRUE(std::holds_alternative<ProcessIdentifier>(result));
        const auto process = std::get<ProcessIdentifier>(result);
        started.push_back(process);
        int seen = 0;
        EXPECT_TRUE(waitUntil(
            [&] {
                ++seen;
                const auto application = computer->runningApplications.withProcessIdentifier(process);
                EXPECT_TRUE(application && application->bundleIdentifier() == "com.google.Chrome")
                    << wait << ", " << seen;
                EXPECT_EQ(processes("com.google.Chrome"), std::vector{process}) << wait << ", " << seen;
                return HasFailure() || !windowsOf(process).empty();
            },
            20));
        EXPECT_TRUE(computer->runningApplications.withProcessIdentifier(process)->forceTerminate());
        EXPECT_TRUE(waitUntil([&] { return processes("com.google.Chrome").empty(); }));
    }
}

TEST_F(RunningApplicationsTest, TheBrowserIsTheApplicationAndNotTheScriptThatWaitsForItsEnd) {
    const auto browser = folder.path() / "usr/lib/chromium/chromium";
    std::filesystem::create_directories(browser.parent_path());
    std::filesystem::copy_file(VANTREL_PEER, browser);
    const auto wrapper = writeScript("Applications/Google Chrome.app/Contents/MacOS/Google Chrome",
                                     browser.string() + " \"$@\"\nsleep 0.2\n");
    const auto result = computer->processLauncher.launch(wrapper.string(), {"--window=Lezione,100,100,300,200"});
    ASSERT_TRUE(std::holds_alternative<ProcessIdentifier>(result));
    const auto script = std::get<ProcessIdentifier>(result);
    started.push_back(script);
    const auto child = [&]() -> ProcessIdentifier {
        const auto found = processes("com.google.Chrome");
        return found.size() == 1 && found.front() != script ? found.front() : 0;
    };
    ASSERT_TRUE(waitUntil([&] { return child() != 0 && !windowsOf(child()).empty(); }));
    const ProcessIdentifier process = child();
    EXPECT_EQ(ProcessTable::find(process)->parent, script);
    EXPECT_TRUE(computer->runningApplications.withProcessIdentifier(process)->terminate());
    EXPECT_TRUE(waitUntil([&] { return !ProcessTable::startTime(process); }));
    EXPECT_TRUE(waitUntil([&] { return processes("com.google.Chrome").empty(); })) << "the script ends by itself";
}

// So it looks in the midst of every exec, too.
TEST_F(RunningApplicationsTest, WhatWasStartedFromABundleIsThatApplicationWithoutAnEnvironmentToo) {
    const auto wrapper =
        writeScript("Applications/Google Chrome.app/Contents/MacOS/Google Chrome", "exec env -i /bin/sleep 60\n");
    const auto result = computer->processLauncher.launch(wrapper.string(), {});
    ASSERT_TRUE(std::holds_alternative<ProcessIdentifier>(result));
    const auto process = std::get<ProcessIdentifier>(result);
    started.push_back(process);
    ASSERT_TRUE(waitUntil([process] {
        const auto entry = ProcessTable::find(process);
        return entry && !entry->isScript && entry->arguments.size() == 2 && entry->display.empty();
    }));
    EXPECT_EQ(processes("com.google.Chrome"), std::vector{process});
    const auto application = computer->runningApplications.withProcessIdentifier(process);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->bundleIdentifier(), "com.google.Chrome");
}

// It was all that there was when the client asked for the process that it had started.
TEST_F(RunningApplicationsTest, AScriptThatWasTakenForTheBrowserHasItsWindowsAndEndsWithIt) {
    const auto browser = folder.path() / "usr/lib/chromium/chromium";
    std::filesystem::create_directories(browser.parent_path());
    std::filesystem::copy_file(VANTREL_PEER, browser);
    const auto wrapper = writeScript("Applications/Google Chrome.app/Contents/MacOS/Google Chrome",
                                     "sleep 1\n" + browser.string() + " \"$@\"\nsleep 0.2\n");
    for (const bool forced : {false, true}) {
        const auto result = computer->processLauncher.launch(wrapper.string(), {"--window=Lezione,100,100,300,200"});
        ASSERT_TRUE(std::holds_alternative<ProcessIdentifier>(result));
        const auto script = std::get<ProcessIdentifier>(result);
        started.push_back(script);
        const auto application = computer->runningApplications.withProcessIdentifier(script);
        ASSERT_TRUE(application);
        ASSERT_TRUE(waitUntil([&] { return !windowsOf(script).empty(); }));
        EXPECT_EQ(windowsOf(script).front().ownerName, "Google Chrome");
        EXPECT_EQ(processes("com.google.Chrome"), std::vector<ProcessIdentifier>{script});
        ASSERT_TRUE(waitUntil([&] {
            const auto now = computer->frontmostApplication.frontmostApplication();
            return now && now->processIdentifier() == script;
        }));
        const auto all = ProcessTable::all();
        const auto child = std::find_if(all.begin(), all.end(), [&](const auto& one) {
            return one.parent == script && one.executablePath == browser.string();
        });
        ASSERT_NE(child, all.end());
        EXPECT_TRUE(forced ? application->forceTerminate() : application->terminate());
        EXPECT_TRUE(waitUntil([&] { return !ProcessTable::startTime(child->process); }));
        EXPECT_TRUE(waitUntil([&] { return application->isTerminated(); }));
        EXPECT_TRUE(processes("com.google.Chrome").empty());
    }
}

TEST_F(RunningApplicationsTest, AShellWithAKnownBrowsersScriptIsThatBrowserFromItsStart) {
    const auto script = writeScript("usr/bin/chromium", "sleep 60\n");
    const pid_t child = fork();
    if (child == 0) {
        execl("/bin/sh", "/bin/sh", "-e", script.c_str(), "--new-window", nullptr);
        _exit(1);
    }
    children.push_back(child);
    EXPECT_TRUE(waitUntil([&] { return lists("com.google.Chrome", child); }));
    const pid_t commands = fork();
    if (commands == 0) {
        execl("/bin/sh", "/bin/sh", "-c", "sleep 60; true", script.c_str(), nullptr);
        _exit(1);
    }
    children.push_back(commands);
    turnFor(0.3);
    EXPECT_FALSE(lists("com.google.Chrome", commands)) << "the path is no script here";
}

TEST_F(RunningApplicationsTest, ARealBrowserBehindAWrapperIsOneApplicationUntilItIsAskedToEnd) {
    ASSERT_TRUE(computer->files.fileExists("/usr/bin/chromium")) << "this test needs Debian's chromium";
    const std::string profile = (folder.path() / "profile").string();
    const auto wrapper = folder.path() / "Applications/Google Chrome.app/Contents/MacOS/Google Chrome";
    std::filesystem::create_directories(wrapper.parent_path());
    writeContents(wrapper,
                  "#!/bin/sh\nexec /usr/bin/chromium --no-sandbox --test-type --log-level=3 --disable-gpu "
                  "--disable-background-networking --disable-sync --disable-component-update --password-store=basic "
                  "--user-data-dir=" +
                      profile + " \"$@\"\n");
    std::filesystem::permissions(wrapper, std::filesystem::perms::owner_all);
    const auto result = computer->processLauncher.launch(
        wrapper.string(), {"--app=data:text/html,<title>Lezione</title>", "--new-window", "--no-first-run"});
    started.push_back(std::get<ProcessIdentifier>(result));
    const ProcessIdentifier process = started.back();
    constexpr double patience = 30;
    ASSERT_TRUE(waitUntil([&] { return !windowsOf(process).empty(); }, patience));
    const auto ofThisProfile = [&profile] {
        std::vector<ProcessEntry> entries = ProcessTable::all();
        std::erase_if(entries, [&profile](const ProcessEntry& entry) {
            return std::none_of(
                entry.arguments.begin(), entry.arguments.end(),
                [&profile](const std::string& argument) { return argument.find(profile) != std::string::npos; });
        });
        return entries.size();
    };
    EXPECT_GT(ofThisProfile(), 1U) << "the browser's helpers run beside it";
    EXPECT_EQ(processes("com.google.Chrome"), std::vector{process});
    const auto application = computer->runningApplications.withProcessIdentifier(process);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->localizedName(), "Google Chrome");
    const auto lock = std::filesystem::symlink_status(profile + "/SingletonLock");
    EXPECT_TRUE(std::filesystem::exists(lock)) << "the browser holds its profile";
    EXPECT_TRUE(application->terminate());
    EXPECT_TRUE(waitUntil([&] { return application->isTerminated(); }, patience));
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(profile + "/SingletonLock")))
        << "it had the time to tidy up";
    EXPECT_TRUE(waitUntil([&] { return ofThisProfile() == 0; }, patience));
}

TEST_F(RunningApplicationsTest, KnowsABrowserByTheClassOfItsWindow) {
    const ProcessIdentifier browser = startPeer("contenuto", {"--window=Lezione,100,100,300,200", "--class=Chromium"});
    EXPECT_TRUE(waitUntil([&] { return lists("com.google.Chrome", browser); }));
    const auto application = computer->runningApplications.withProcessIdentifier(browser);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->bundleIdentifier(), "com.google.Chrome");
    EXPECT_EQ(application->localizedName(), "Google Chrome");
    EXPECT_FALSE(lists("org.mozilla.firefox", browser));
}

TEST_F(RunningApplicationsTest, TakesTheExecutableBeforeTheClassOfTheWindow) {
    const ProcessIdentifier browser =
        startPeer("firefox-esr", {"--window=Lezione,100,100,300,200", "--class=Chromium"});
    EXPECT_TRUE(waitUntil([&] { return !windowsOf(browser).empty(); }));
    EXPECT_TRUE(lists("org.mozilla.firefox", browser));
    EXPECT_FALSE(lists("com.google.Chrome", browser));
}

TEST_F(RunningApplicationsTest, APlainProcessIsAnApplicationOnceItHasAWindow) {
    const ProcessIdentifier without = startPeer("calcolo", {});
    const ProcessIdentifier with = startPeer("calcolo", {"--window=Calcolo,100,100,300,200"});
    EXPECT_TRUE(waitUntil([&] { return computer->runningApplications.withProcessIdentifier(with) != nullptr; }));
    EXPECT_FALSE(computer->runningApplications.withProcessIdentifier(without));
    const auto application = computer->runningApplications.withProcessIdentifier(with);
    EXPECT_EQ(application->bundleIdentifier(), std::nullopt);
    EXPECT_EQ(application->localizedName(), "calcolo");
}

TEST_F(RunningApplicationsTest, AnUnknownBundleIsAnApplicationCalledAfterItsFolder) {
    const ProcessIdentifier process = startPeer("Calcolo.app/Contents/MacOS/calc", {});
    EXPECT_TRUE(waitUntil([&] { return computer->runningApplications.withProcessIdentifier(process) != nullptr; }));
    const auto application = computer->runningApplications.withProcessIdentifier(process);
    EXPECT_EQ(application->bundleIdentifier(), std::nullopt);
    EXPECT_EQ(application->localizedName(), "Calcolo");
}

TEST_F(RunningApplicationsTest, AProcessThatABrowserStartsBesideItsOwnIsNoApplication) {
    const ProcessIdentifier helper = startPeer("chromium", {"--type=renderer"});
    turnFor(0.2);
    EXPECT_FALSE(computer->runningApplications.withProcessIdentifier(helper));
    EXPECT_FALSE(lists("com.google.Chrome", helper));
}

TEST_F(RunningApplicationsTest, ListsTheOldestFirst) {
    const pid_t first = start("chromium", thisDisplay().c_str());
    usleep(20000);
    const pid_t second = start("Google Chrome.app/Contents/MacOS/Google Chrome", thisDisplay().c_str());
    EXPECT_EQ(processes("com.google.Chrome"), (std::vector<ProcessIdentifier>{first, second}));
}

TEST_F(RunningApplicationsTest, AsksTheWindowsToCloseWhenItAsksAnApplicationToEnd) {
    const ProcessIdentifier process = startPeer("calcolo", {"--window=Calcolo,100,100,300,200", "--ignores-terminate"});
    EXPECT_TRUE(waitUntil([&] { return !windowsOf(process).empty(); }));
    const auto application = computer->runningApplications.withProcessIdentifier(process);
    ASSERT_TRUE(application);
    EXPECT_TRUE(application->terminate());
    EXPECT_TRUE(waitUntil([&] { return windowsOf(process).empty(); }));
    EXPECT_FALSE(application->isTerminated());
    EXPECT_TRUE(application->forceTerminate());
    EXPECT_TRUE(waitUntil([&] { return application->isTerminated(); }));
}

TEST_F(RunningApplicationsTest, SignalsAnApplicationThatIsStillThereAWhileAfterItsWindows) {
    const ProcessIdentifier process = startPeer("calcolo", {"--window=Calcolo,100,100,300,200"});
    EXPECT_TRUE(waitUntil([&] { return !windowsOf(process).empty(); }));
    const auto application = computer->runningApplications.withProcessIdentifier(process);
    ASSERT_TRUE(application);
    EXPECT_TRUE(application->terminate());
    EXPECT_TRUE(waitUntil([&] { return windowsOf(process).empty(); }));
    EXPECT_FALSE(application->isTerminated()) << "it gets the time to leave by itself";
    EXPECT_TRUE(waitUntil([&] { return application->isTerminated(); }));
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
