#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>

#include "platform/linux/apps/LinuxProcessLauncher.h"
#include "platform/linux/apps/ProcFile.h"
#include "platform/linux/apps/ProcessTable.h"
#include "platform/linux/apps/StartedBundles.h"
#include "platform/linux/system/FileDescriptor.h"
#include "platform/linux/system/LinuxFileManager.h"
#include "tests/linux/support/InstalledCommands.h"
#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {
namespace {

bool waitUntil(const std::function<bool()>& condition) {
    for (int waited = 0; waited < 5000 && !condition(); ++waited) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return condition();
}

// A zombie is still listed.
bool isListed(pid_t process) {
    return std::filesystem::exists("/proc/" + std::to_string(process));
}

class ProcessLauncherTest : public testing::Test {
  protected:
    std::filesystem::path script(const std::string& name, const std::string& text) const {
        writeContents(folder.path() / name, text);
        std::filesystem::permissions(folder.path() / name, std::filesystem::perms::owner_all);
        return folder.path() / name;
    }

    // What the script writes to the path in its first argument, read after it has ended.
    std::string outputOf(const std::string& text) {
        const auto result = launcher.launch(script("script", text).string(), {(folder.path() / "output").string()});
        const auto* process = std::get_if<ProcessIdentifier>(&result);
        if (process == nullptr) return std::get<PlatformError>(result).localizedDescription;
        EXPECT_TRUE(waitUntil([process] { return !isListed(*process); }));
        return contentsOf(folder.path() / "output");
    }

    std::string errorOf(const std::string& path, const std::vector<std::string>& arguments = {}) {
        const auto result = launcher.launch(path, arguments);
        const auto* failure = std::get_if<PlatformError>(&result);
        return failure != nullptr ? failure->localizedDescription : "(started)";
    }

    TemporaryFolder folder;
    StartedBundles started;
    LinuxProcessLauncher launcher{started};
};

TEST_F(ProcessLauncherTest, HandsOverTheEnvironmentAndTheFolder) {
    setenv("VANTREL_TEST_VARIABLE", "un valore", 1);
    EXPECT_EQ(outputOf("#!/bin/sh\necho \"$VANTREL_TEST_VARIABLE,$PWD\" >\"$1\"\n"),
              "un valore," + std::filesystem::current_path().string() + "\n");
    unsetenv("VANTREL_TEST_VARIABLE");
}

TEST_F(ProcessLauncherTest, HandsOverTheStandardStreamsAndNoOtherFile) {
    // Without the close-on-exec flag, as a library may do it.
    const FileDescriptor leaked(open("/dev/null", O_RDONLY));
    ASSERT_TRUE(leaked.isOpen());
    const auto own = [](int number) {
        return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(number)).string() + "\n";
    };
    EXPECT_EQ(outputOf("#!/bin/sh\n{ readlink /proc/self/fd/0; readlink /proc/self/fd/2; } >\"$1\"\n"),
              own(STDIN_FILENO) + own(STDERR_FILENO));
    EXPECT_EQ(outputOf("#!/bin/sh\n[ -e /proc/$$/fd/" + std::to_string(leaked.get()) +
                       " ] && echo open >\"$1\" || echo closed >\"$1\"\n"),
              "closed\n");
}

TEST_F(ProcessLauncherTest, GivesTheSignalsBackTheirUsualMeaning) {
    signal(SIGPIPE, SIG_IGN);
    signal(SIGTERM, SIG_IGN);
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
    const auto result = launcher.launch("/bin/sleep", {"60"});
    pthread_sigmask(SIG_UNBLOCK, &blocked, nullptr);
    signal(SIGTERM, SIG_DFL);
    signal(SIGPIPE, SIG_DFL);
    ASSERT_TRUE(std::holds_alternative<ProcessIdentifier>(result));
    const auto process = std::get<ProcessIdentifier>(result);
    const std::string status = readProcFile("/proc/" + std::to_string(process) + "/status");
    EXPECT_NE(status.find("SigBlk:\t0000000000000000"), std::string::npos) << status;
    // Without the two signals above 31 that the C library reserves.
    constexpr unsigned long usualSignals = 0x7fffffff;
    constexpr std::string_view ignored = "SigIgn:\t";
    const std::size_t at = status.find(ignored);
    ASSERT_NE(at, std::string::npos) << status;
    EXPECT_EQ(std::stoul(status.substr(at + ignored.size(), 16), nullptr, 16) & usualSignals, 0UL) << status;
    EXPECT_TRUE(launcher.sendSignal(process, SIGTERM));
    EXPECT_TRUE(waitUntil([process] { return !isListed(process); }));
}

TEST_F(ProcessLauncherTest, LeavesNoZombie) {
    std::vector<ProcessIdentifier> processes;
    for (int count = 0; count < 20; ++count) {
        processes.push_back(std::get<ProcessIdentifier>(launcher.launch("/bin/true", {})));
    }
    for (const auto process : processes) EXPECT_TRUE(waitUntil([process] { return !isListed(process); })) << process;
}

TEST_F(ProcessLauncherTest, KeepsCtrlCOfTheClientsTerminalAwayFromTheProcess) {
    const auto process = std::get<ProcessIdentifier>(launcher.launch("/bin/sleep", {"60"}));
    EXPECT_EQ(getpgid(process), process);
    EXPECT_TRUE(launcher.sendSignal(process, SIGKILL));
    EXPECT_TRUE(waitUntil([process] { return !isListed(process); }));
}

TEST_F(ProcessLauncherTest, TheProcessOutlivesTheThreadThatStartedIt) {
    ProcessIdentifier process = 0;
    std::thread([&] { process = std::get<ProcessIdentifier>(launcher.launch("/bin/sleep", {"60"})); }).join();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_TRUE(isListed(process));
    EXPECT_TRUE(launcher.sendSignal(process, SIGKILL));
    EXPECT_TRUE(waitUntil([process] { return !isListed(process); }));
}

TEST_F(ProcessLauncherTest, SaysInItalianWhyNothingWasStarted) {
    const std::string path = folder.path().string() + "/";
    writeContents(path + "testo", "niente");
    script("ignoto",
           "\x7f"
           "non un programma");
    script("orfano", "#!/vantrel/nessun/interprete\n");
    std::filesystem::create_symlink(path + "mancante", path + "interrotto");
    std::filesystem::create_symlink(path + "cerchio", path + "cerchio");
    EXPECT_EQ(errorOf(path + "mancante"), "Il file “mancante” non esiste.");
    EXPECT_EQ(errorOf(path + "interrotto"), "Il file “interrotto” non esiste.");
    EXPECT_EQ(errorOf(path + "cerchio"), "Il file “cerchio” non esiste.");
    EXPECT_EQ(errorOf(path + "testo/dentro"), "Il file “dentro” non esiste.");
    EXPECT_EQ(errorOf(""), "Il file “” non esiste.");
    EXPECT_EQ(errorOf("/bin"), "“bin” è una cartella e non può essere avviata.");
    EXPECT_EQ(errorOf(path + "testo"), "Non hai i permessi per eseguire il file “testo”.");
    EXPECT_EQ(errorOf(path + "ignoto"), "Il file “ignoto” non è un programma eseguibile.");
    EXPECT_EQ(errorOf(path + "orfano"), "Il programma che deve eseguire il file “orfano” non esiste.");
    EXPECT_EQ(errorOf("/bin/true", {std::string(std::size_t{4} << 20, 'x')}),
              "Gli argomenti per avviare “true” sono troppo lunghi.");
    EXPECT_EQ(errorOf("/bin/true", {std::string("a\0b", 3)}), "Gli argomenti per avviare “true” non sono validi.");
    EXPECT_EQ(errorOf(std::string("/bin/true\0x", 11)), std::string("Il nome del file “true\0x” non è valido.", 44));
}

TEST_F(ProcessLauncherTest, LooksForNothingAlongThePath) {
    EXPECT_EQ(errorOf("true"), "Il file “true” non esiste.");
}

TEST_F(ProcessLauncherTest, StartsAnInstalledBrowserForTheExecutableThatMacOSHas) {
    const InstalledCommands commands(folder.path());
    const std::string edge = "/Applications/Microsoft Edge.app/Contents/MacOS/Microsoft Edge";
    EXPECT_EQ(errorOf(edge), "Il file “Microsoft Edge” non esiste.");
    const std::string program = commands.install(
        "microsoft-edge", "printf '%s\\n' \"$0\" \"$@\" >" + (folder.path() / "output").string() + "\nexec sleep 60\n");
    const auto result = launcher.launch(edge, {"--app=https://x", "due parole"});
    ASSERT_TRUE(std::holds_alternative<ProcessIdentifier>(result));
    const auto process = std::get<ProcessIdentifier>(result);
    EXPECT_TRUE(waitUntil([&] { return contentsOf(folder.path() / "output").ends_with("due parole\n"); }));
    EXPECT_EQ(contentsOf(folder.path() / "output"), program + "\n--app=https://x\ndue parole\n");
    EXPECT_EQ(started.executableOf(*ProcessTable::find(process)), edge) << "it stays that application";
    EXPECT_TRUE(launcher.sendSignal(process, SIGKILL));
    EXPECT_TRUE(waitUntil([process] { return !isListed(process); }));
    commands.install("microsoft-edge", "");
    writeContents(program, "#!/vantrel/nessun/interprete\n");
    EXPECT_EQ(errorOf(edge), "Il programma che deve eseguire il file “microsoft-edge” non esiste.");
}

TEST_F(ProcessLauncherTest, ABrokenLinkDoesNotExistForTheFileManagerEither) {
    std::filesystem::create_symlink(folder.path() / "mancante", folder.path() / "interrotto");
    EXPECT_FALSE(LinuxFileManager().fileExists((folder.path() / "interrotto").string()));
}

TEST_F(ProcessLauncherTest, SignalsNoGroupOfProcesses) {
    // Signal 0 only checks whether there is a process to signal.
    EXPECT_FALSE(launcher.sendSignal(0, 0));
    EXPECT_FALSE(launcher.sendSignal(-1, 0));
    EXPECT_FALSE(launcher.sendSignal(-getpgrp(), 0));
    EXPECT_TRUE(launcher.sendSignal(getpid(), 0));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
