#include <algorithm>
#include <mutex>
#include <optional>
#include <utility>

#include "tests/contracts/ContractTest.h"

namespace vantrel::contracts {
namespace {

constexpr int terminateSignal = 15;
constexpr int killSignal = 9;
constexpr ProcessIdentifier nobody = 0x3fffffff;

class ProcessContract : public ContractTest {
  protected:
    using Applications = std::vector<std::shared_ptr<RunningApplication>>;

    ProcessIdentifier launch(const std::vector<std::string>& arguments) {
        const auto result = computer().processLauncher.launch(host().peerExecutable(), arguments);
        if (const auto* failure = std::get_if<PlatformError>(&result)) {
            ADD_FAILURE() << failure->localizedDescription;
            return nobody;
        }
        return std::get<ProcessIdentifier>(result);
    }

    // The application of a new process that has read its arguments.
    std::shared_ptr<RunningApplication> launched(std::vector<std::string> arguments) {
        arguments.push_back("--launched");
        const ProcessIdentifier process = launch(arguments);
        EXPECT_TRUE(eventually([&] { return host().argumentsReceived(process) == arguments; }));
        EXPECT_TRUE(eventually([&] { return withProcess(process) != nullptr; }));
        return withProcess(process);
    }

    std::shared_ptr<RunningApplication> withProcess(ProcessIdentifier process) {
        return computer().runningApplications.withProcessIdentifier(process);
    }

    std::vector<ProcessIdentifier> withBundle(std::string_view identifier) {
        std::vector<ProcessIdentifier> processes;
        for (const auto& application : computer().runningApplications.withBundleIdentifier(identifier)) {
            processes.push_back(application->processIdentifier());
        }
        return processes;
    }

    bool isListed(std::string_view identifier, ProcessIdentifier process) {
        const auto processes = withBundle(identifier);
        return std::find(processes.begin(), processes.end(), process) != processes.end();
    }

    bool hasWindow(ProcessIdentifier process) {
        const auto windows = computer().windowList.copy(WindowListOption::onScreenOnly);
        return windows && std::any_of(windows->begin(), windows->end(),
                                      [process](const WindowEntry& window) { return window.ownerPID == process; });
    }

    std::optional<ProcessIdentifier> frontmost() {
        std::shared_ptr<RunningApplication> application;
        host().onMain([&] { application = computer().frontmostApplication.frontmostApplication(); });
        if (!application) return std::nullopt;
        return application->processIdentifier();
    }

    /// Where the system may decline it and does, the test is skipped.
    bool broughtToTheFront(RunningApplication& application, ActivationOptions options) {
        return activated(application.activate(options)) &&
               activated(eventually([&] { return frontmost() == application.processIdentifier(); }));
    }
};

TEST_F(ProcessContract, EachArgumentArrivesAsItStands) {
    const std::vector<std::string> arguments{"--exits-at-once",
                                             "--app=https://meet.example/a?b=1&c='d e'&f=\"g\"",
                                             "$(echo no)",
                                             "`echo no`; echo no | cat >no & exit",
                                             "$HOME ~ * ? [a-z] {a,b} \\ \\\\ %20 !",
                                             "due\nrighe\tuna tabulazione",
                                             "perché no? 🔒 日本",
                                             "",
                                             " ",
                                             "--",
                                             "last"};
    const ProcessIdentifier process = launch(arguments);
    ASSERT_GT(process, 0);
    EXPECT_TRUE(eventually([&] { return host().argumentsReceived(process).has_value(); }));
    EXPECT_EQ(host().argumentsReceived(process), arguments);
}

TEST_F(ProcessContract, AProcessWithoutArgumentsReceivesNone) {
    const ProcessIdentifier process = launch({});
    EXPECT_TRUE(eventually([&] { return host().argumentsReceived(process).has_value(); }));
    EXPECT_EQ(host().argumentsReceived(process), std::vector<std::string>());
}

TEST_F(ProcessContract, WhatCannotBeExecutedIsToldAtOnceWithAText) {
    for (const std::string& path : {host().missingPath(), host().existingFolder(), host().plainFile(), std::string(),
                                    host().plainFile() + "/inside"}) {
        const auto result = computer().processLauncher.launch(path, {"--exits-at-once"});
        const auto* failure = std::get_if<PlatformError>(&result);
        ASSERT_NE(failure, nullptr) << path;
        expectText(*failure);
    }
}

TEST_F(ProcessContract, AZeroByteInThePathOrInAnArgumentStartsNothing) {
    const std::string executable = host().peerExecutable();
    const std::string cut = std::string(1, '\0') + "x";
    for (const auto& [path, argument] : {std::pair{executable + cut, std::string("a")}, {executable, "a" + cut}}) {
        const auto result = computer().processLauncher.launch(path, {argument});
        const auto* error = std::get_if<PlatformError>(&result);
        ASSERT_TRUE(error) << std::get<ProcessIdentifier>(result);
        expectText(*error);
    }
}

TEST_F(ProcessContract, AnArgumentThatIsNotUTF8StartsNothing) {
    for (const std::string& argument : {std::string("\xff"), std::string("perch\xe9"), std::string("\xed\xa0\x80")}) {
        const auto result = computer().processLauncher.launch(host().peerExecutable(), {"--exits-at-once", argument});
        ASSERT_TRUE(std::holds_alternative<PlatformError>(result)) << std::get<ProcessIdentifier>(result);
        expectText(std::get<PlatformError>(result));
    }
}

// Some file systems take any bytes for a name, others UTF-8 alone.
TEST_F(ProcessContract, AMissingFileWhoseNameIsNotUTF8IsToldInUTF8) {
    const auto result = computer().processLauncher.launch(host().missingPath() + "\xff", {});
    const auto* failure = std::get_if<PlatformError>(&result);
    ASSERT_TRUE(failure);
    expectText(*failure);
}

TEST_F(ProcessContract, AnApplicationsNameIsToldInUTF8WhereverItIsTold) {
    const auto peer = host().peerWhoseNameIsNotUTF8();
    const auto result = computer().processLauncher.launch(peer.executable, {"--window=Lezione,100,100,400,300"});
    ASSERT_TRUE(std::holds_alternative<ProcessIdentifier>(result));
    const ProcessIdentifier process = std::get<ProcessIdentifier>(result);
    ASSERT_TRUE(eventually([&] { return hasWindow(process); }));
    const auto application = withProcess(process);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->localizedName(), peer.localizedName);
    const auto windows = computer().windowList.copy(WindowListOption::all);
    ASSERT_TRUE(windows);
    for (const WindowEntry& window : *windows) {
        if (window.ownerPID == process) {
            EXPECT_EQ(window.ownerName, peer.localizedName);
        }
    }
    if (!broughtToTheFront(*application, ActivationOptions::none)) return;
    std::optional<std::string> inFront;
    host().onMain([&] {
        const auto found = computer().frontmostApplication.frontmostApplication();
        if (found) inFront = found->localizedName();
    });
    EXPECT_EQ(inFront, peer.localizedName);
}

TEST_F(ProcessContract, AnApplicationIsFoundByItsBundleIdentifierAndByItsProcess) {
    const auto application = launched({});
    ASSERT_TRUE(application);
    const ProcessIdentifier process = application->processIdentifier();
    EXPECT_EQ(application->bundleIdentifier(), "com.google.Chrome");
    EXPECT_EQ(application->localizedName(), "Google Chrome");
    EXPECT_FALSE(application->isTerminated());
    EXPECT_EQ(withBundle("com.google.Chrome"), std::vector{process});
    for (const char* other : {"com.google.chrome", "com.google.Chrome.helper", "com.google", ""}) {
        EXPECT_FALSE(isListed(other, process)) << other;
    }
}

TEST_F(ProcessContract, NoApplicationIsFoundByAProcessThatDoesNotExist) {
    for (const ProcessIdentifier process : {nobody, 0, -1}) EXPECT_FALSE(withProcess(process)) << process;
}

TEST_F(ProcessContract, TheOlderOfTwoInstancesComesFirst) {
    const auto first = launched({});
    ASSERT_TRUE(first);
    host().letTimePass(0.05);
    const auto second = launched({});
    ASSERT_TRUE(second);
    EXPECT_EQ(withBundle("com.google.Chrome"), (std::vector{first->processIdentifier(), second->processIdentifier()}));
}

TEST_F(ProcessContract, TheEndOfAProcessIsSeenWithoutATurnOfTheMainRunLoop) {
    const auto application = launched({});
    ASSERT_TRUE(application);
    bool before = true;
    bool after = false;
    bool found = true;
    host().onMain([&] {
        before = application->isTerminated();
        computer().processLauncher.sendSignal(application->processIdentifier(), killSignal);
        for (int waited = 0; waited < 300 && !after; ++waited) {
            computer().threads.sleep(0.1);
            after = application->isTerminated();
        }
        found = withProcess(application->processIdentifier()) != nullptr;
    });
    EXPECT_FALSE(before);
    EXPECT_TRUE(after);
    EXPECT_FALSE(found);
}

// The main thread does not turn meanwhile, so that only the kernel can tell.
TEST_F(ProcessContract, AnApplicationThatItsParentDoesNotWaitForHasEndedAllTheSame) {
    const ProcessIdentifier process = host().startPeerWithoutWaiting();
    ASSERT_TRUE(eventually([&] { return withProcess(process) != nullptr; }));
    const auto application = withProcess(process);
    ASSERT_TRUE(application);
    bool before = true;
    bool after = false;
    host().onMain([&] {
        before = application->isTerminated();
        EXPECT_TRUE(computer().processLauncher.sendSignal(process, killSignal));
        for (int waited = 0; waited < 300 && !after; ++waited) {
            computer().threads.sleep(0.1);
            after = application->isTerminated();
        }
        EXPECT_FALSE(application->terminate());
        EXPECT_FALSE(application->forceTerminate());
        EXPECT_FALSE(application->activate(ActivationOptions::none));
        EXPECT_FALSE(withProcess(process));
    });
    EXPECT_FALSE(before);
    EXPECT_TRUE(after);
    // It is still in the table of processes, which takes signals for it.
    EXPECT_TRUE(computer().processLauncher.sendSignal(process, killSignal));
    EXPECT_FALSE(isListed("com.google.Chrome", process));
}

TEST_F(ProcessContract, AProcessThatNobodyWaitsForIsGoneWhenItHasEnded) {
    const ProcessIdentifier process = launch({"--exits-at-once"});
    ASSERT_TRUE(eventually([&] { return host().argumentsReceived(process).has_value(); }));
    EXPECT_TRUE(eventually([&] { return !withProcess(process); }));
    EXPECT_FALSE(isListed("com.google.Chrome", process));
    EXPECT_TRUE(eventually([&] { return !computer().processLauncher.sendSignal(process, killSignal); }));
}

TEST_F(ProcessContract, AnApplicationEndsWhenItIsAskedTo) {
    const auto application = launched({"--window=Lezione,100,100,400,300"});
    ASSERT_TRUE(application);
    ASSERT_TRUE(eventually([&] { return hasWindow(application->processIdentifier()); }));
    EXPECT_TRUE(application->terminate());
    EXPECT_TRUE(eventually([&] { return application->isTerminated(); }));
    EXPECT_FALSE(withProcess(application->processIdentifier()));
}

TEST_F(ProcessContract, AnApplicationMayIgnoreThatItIsAskedToEndButNotThatItIsForced) {
    const auto application = launched({"--ignores-terminate"});
    ASSERT_TRUE(application);
    EXPECT_TRUE(application->terminate());
    EXPECT_TRUE(computer().processLauncher.sendSignal(application->processIdentifier(), terminateSignal));
    host().letTimePass(0.5);
    EXPECT_FALSE(application->isTerminated());
    EXPECT_TRUE(withProcess(application->processIdentifier()));
    EXPECT_TRUE(application->forceTerminate());
    EXPECT_TRUE(eventually([&] { return application->isTerminated(); }));
}

TEST_F(ProcessContract, AnApplicationThatHasEndedTakesNoRequest) {
    const auto application = launched({});
    ASSERT_TRUE(application);
    EXPECT_TRUE(application->forceTerminate());
    ASSERT_TRUE(eventually([&] { return application->isTerminated(); }));
    EXPECT_FALSE(application->terminate());
    EXPECT_FALSE(application->forceTerminate());
    EXPECT_FALSE(application->activate(ActivationOptions::none));
    EXPECT_FALSE(application->activate(ActivationOptions::ignoringOtherApps));
}

TEST_F(ProcessContract, ASignalReachesTheProcessThatItNamesAndNoOther) {
    const auto asked = launched({});
    const auto killed = launched({"--ignores-terminate"});
    const auto left = launched({});
    ASSERT_TRUE(asked && killed && left);
    EXPECT_TRUE(computer().processLauncher.sendSignal(asked->processIdentifier(), terminateSignal));
    EXPECT_TRUE(computer().processLauncher.sendSignal(killed->processIdentifier(), killSignal));
    EXPECT_FALSE(computer().processLauncher.sendSignal(nobody, killSignal));
    EXPECT_TRUE(eventually([&] { return asked->isTerminated() && killed->isTerminated(); }));
    EXPECT_FALSE(left->isTerminated());
}

// Signal 0 only asks. For kill(2) these numbers name groups of processes.
TEST_F(ProcessContract, ZeroAndNegativeNumbersNameNoProcess) {
    const auto application = launched({});
    ASSERT_TRUE(application);
    const ProcessIdentifier process = application->processIdentifier();
    EXPECT_TRUE(computer().processLauncher.sendSignal(process, 0));
    for (const ProcessIdentifier none : {0, -1, -process}) {
        EXPECT_FALSE(computer().processLauncher.sendSignal(none, 0)) << none;
    }
    EXPECT_FALSE(application->isTerminated());
}

// The launch takes place on a background thread. On some computers it has to tell the main thread something, which may
// be held for as long as a person likes.
TEST_F(ProcessContract, AProcessStartsWhileTheMainThreadIsUnderAnAlert) {
    computer().dispatch.mainQueue().async([this] {
        note("asked");
        computer().alerts.runModal({AlertStyle::warning, "Domanda", "Perché?", {"Continua"}});
        note("answered");
    });
    ASSERT_TRUE(noted(1));
    const auto application = launched({"--window=Lezione,100,100,400,300"});
    ASSERT_TRUE(application);
    EXPECT_TRUE(eventually([&] { return hasWindow(application->processIdentifier()); }));
    note("started");
    host().pressAlertButton("Continua");
    ASSERT_TRUE(noted(3));
    EXPECT_EQ(notes(), (Notes{"asked", "started", "answered"}));
}

TEST_F(ProcessContract, ActivationBringsAnApplicationToTheFront) {
    const auto first = launched({"--window=Uno,100,100,400,300"});
    const auto second = launched({"--window=Due,150,150,400,300"});
    ASSERT_TRUE(first && second);
    ASSERT_TRUE(
        eventually([&] { return hasWindow(first->processIdentifier()) && hasWindow(second->processIdentifier()); }));
    if (!broughtToTheFront(*first, ActivationOptions::none)) return;
    if (!broughtToTheFront(*second, ActivationOptions::ignoringOtherApps)) return;
    if (!broughtToTheFront(*first, ActivationOptions::ignoringOtherApps)) return;
}

TEST_F(ProcessContract, AnApplicationThatHasEndedIsNotInFront) {
    const auto application = launched({"--window=Lezione,100,100,400,300"});
    ASSERT_TRUE(application);
    ASSERT_TRUE(eventually([&] { return hasWindow(application->processIdentifier()); }));
    if (!broughtToTheFront(*application, ActivationOptions::none)) return;
    EXPECT_TRUE(application->forceTerminate());
    EXPECT_TRUE(eventually([&] { return frontmost() != application->processIdentifier(); }));
}

class OpenerContract : public ProcessContract {
  protected:
    URL formed(const std::string& text) {
        const auto url = computer().urls.form(text);
        EXPECT_TRUE(url) << text;
        return url.value_or(URL{});
    }

    URL fileURL(const std::string& path) {
        return formed("file://" + computer().urls.addingPercentEncodingForQuery(path).value_or(""));
    }

    // The application folder of the peer's executable.
    URL peerApplication() {
        constexpr std::string_view extension = ".app";
        const std::string path = host().peerExecutable();
        return fileURL(path.substr(0, path.find(extension) + extension.size()));
    }

    void open(const URL& application) {
        computer().applicationOpener.open({formed("https://meet.example/abc?x=1")}, application, true,
                                          [this](ApplicationOpener::Result result) {
                                              {
                                                  const std::lock_guard lock(mutex_);
                                                  result_ = std::move(result);
                                              }
                                              note("completion");
                                          });
    }

    ApplicationOpener::Result result() {
        const std::lock_guard lock(mutex_);
        return result_;
    }

    // An application is not held for longer than its computer lives.
    void TearDown() override {
        {
            const std::lock_guard lock(mutex_);
            result_ = {};
        }
        ProcessContract::TearDown();
    }

  private:
    std::mutex mutex_;
    ApplicationOpener::Result result_;
};

TEST_F(OpenerContract, StartsTheApplicationAndTellsOnceWhichOneItIs) {
    open(peerApplication());
    ASSERT_TRUE(noted(1));
    const auto outcome = result();
    const auto* application = std::get_if<std::shared_ptr<RunningApplication>>(&outcome);
    ASSERT_NE(application, nullptr) << std::get<PlatformError>(outcome).localizedDescription;
    ASSERT_TRUE(*application);
    EXPECT_EQ((*application)->bundleIdentifier(), "com.google.Chrome");
    EXPECT_FALSE((*application)->isTerminated());
    EXPECT_TRUE(isListed("com.google.Chrome", (*application)->processIdentifier()));
    host().letTimePass(0.3);
    EXPECT_EQ(notes(), Notes{"completion"});
}

TEST_F(OpenerContract, AnswersUnderAnAlertThatABlockOfTheMainQueueOpened) {
    computer().dispatch.mainQueue().async([this] {
        computer().alerts.runModal({AlertStyle::warning, "Domanda", "Perché?", {"Continua"}});
        note("dismissed");
    });
    host().letTimePass(0.3);
    computer().dispatch.userInitiatedQueue().async([this] { open(peerApplication()); });
    EXPECT_TRUE(noted(1));
    EXPECT_EQ(notes(), Notes{"completion"});
    host().pressAlertButton("Continua");
    ASSERT_TRUE(noted(2));
    EXPECT_EQ(notes(), (Notes{"completion", "dismissed"}));
}

TEST_F(OpenerContract, ReturnsAtOnceWhileTheMainThreadWaits) {
    const auto returned = computer().dispatch.makeSemaphore(0);
    constexpr double patience = 30;
    bool wasIt = false;
    computer().dispatch.userInitiatedQueue().async([&] {
        open(peerApplication());
        returned->signal();
    });
    host().onMain([&] { wasIt = returned->wait(patience); });
    EXPECT_TRUE(wasIt);
    EXPECT_TRUE(noted(1));
}

TEST_F(OpenerContract, ReturnsAtOnceOnTheMainThread) {
    host().onMain([this] {
        open(peerApplication());
        note("returned");
    });
    ASSERT_TRUE(noted(2));
    EXPECT_EQ(notes(), (Notes{"returned", "completion"}));
}

TEST_F(OpenerContract, AnApplicationThatEndsBeforeTheAnswerIsTheOneThatIsTold) {
    open(peerApplication());
    ASSERT_TRUE(eventually([&] { return !withBundle("com.google.Chrome").empty(); }));
    const ProcessIdentifier process = withBundle("com.google.Chrome").front();
    EXPECT_TRUE(computer().processLauncher.sendSignal(process, killSignal));
    ASSERT_TRUE(noted(1));
    const auto outcome = result();
    if (const auto* failure = std::get_if<PlatformError>(&outcome)) {
        expectText(*failure);
        return;
    }
    const auto application = std::get<std::shared_ptr<RunningApplication>>(outcome);
    if (!application) {
        EXPECT_FALSE(host().namesEveryOpenedApplication());
        return;
    }
    EXPECT_EQ(application->processIdentifier(), process);
    EXPECT_EQ(application->bundleIdentifier(), "com.google.Chrome");
    EXPECT_TRUE(eventually([&] { return application->isTerminated(); }));
    EXPECT_FALSE(application->activate(ActivationOptions::ignoringOtherApps));
    EXPECT_FALSE(application->terminate());
}

TEST_F(OpenerContract, TellsOnceWhyAnApplicationThatIsMissingWasNotOpened) {
    open(fileURL(host().missingPath() + "/Nessuno.app"));
    ASSERT_TRUE(noted(1));
    const auto outcome = result();
    const auto* failure = std::get_if<PlatformError>(&outcome);
    ASSERT_NE(failure, nullptr);
    expectText(*failure);
    host().letTimePass(0.3);
    EXPECT_EQ(notes(), Notes{"completion"});
}

TEST_F(OpenerContract, AMissingApplicationWhoseNameIsNotUTF8IsToldInUTF8) {
    open(formed("file:///Nessun%FFa.app"));
    ASSERT_TRUE(noted(1));
    const auto outcome = result();
    const auto* failure = std::get_if<PlatformError>(&outcome);
    ASSERT_NE(failure, nullptr);
    expectText(*failure);
}

}  // namespace
}  // namespace vantrel::contracts
