#include <string>
#include <vector>

#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

class ProcessesTest : public MacTest {
  protected:
    ProcessIdentifier launch(const std::string& path, const Lines& arguments = {}) {
        const auto result = computer().processLauncher.launch(path, arguments);
        const auto* process = std::get_if<ProcessIdentifier>(&result);
        EXPECT_NE(nullptr, process) << std::get<PlatformError>(result).localizedDescription;
        return process == nullptr ? 0 : *process;
    }
    std::string failure(const std::string& path) {
        const auto result = computer().processLauncher.launch(path, {});
        const auto* error = std::get_if<PlatformError>(&result);
        return error == nullptr ? "" : error->localizedDescription;
    }
    std::vector<ProcessIdentifier> running(std::string_view bundleIdentifier) {
        std::vector<ProcessIdentifier> found;
        for (const auto& each : computer().runningApplications.withBundleIdentifier(bundleIdentifier)) {
            found.push_back(each->processIdentifier());
        }
        return found;
    }
    std::shared_ptr<RunningApplication> application(ProcessIdentifier process) {
        return computer().runningApplications.withProcessIdentifier(process);
    }
};

TEST_F(ProcessesTest, StartsOnlyWhatIsExecutable) {
    auto& files = mac().files();
    files.add("/Applications/Testo.app/Contents/MacOS/Testo");
    files.add("/Applications/Collegamento", FileKind::brokenLink);
    EXPECT_FALSE(computer().files.fileExists("/Applications/Collegamento"));
    EXPECT_EQ("Il file “Nessuno” non esiste.", failure("/Applications/Nessuno"));
    EXPECT_EQ("Il file “Collegamento” non esiste.", failure("/Applications/Collegamento"));
    EXPECT_EQ("“MacOS” è una cartella e non può essere avviata.", failure("/Applications/Testo.app/Contents/MacOS"));
    EXPECT_EQ("Non hai i permessi per eseguire il file “Testo”.",
              failure("/Applications/Testo.app/Contents/MacOS/Testo"));
    mac().processes().failLaunches("Risorse esaurite.");
    EXPECT_EQ("Risorse esaurite.", failure(safariPath));
    mac().processes().failLaunches({});
    EXPECT_EQ(Happenings{}, transcript());
    launch(safariPath);
    EXPECT_EQ(ProcessEvent::started, events().at(0).kind);
}

TEST_F(ProcessesTest, AreListedOnlyOnceTheMainRunLoopHasTurned) {
    mac().processes().install(chromePath, chrome());
    std::vector<ProcessIdentifier> during{0};
    std::shared_ptr<RunningApplication> named;
    mac().postToMain([&] {
        const auto started = computer().processLauncher.launch(chromePath, {});
        computer().threads.sleep(5);
        during = running("com.google.Chrome");
        named = application(std::get<ProcessIdentifier>(started));
    });
    mac().runFor(6);
    EXPECT_EQ(during, std::vector<ProcessIdentifier>{});
    EXPECT_EQ(named, nullptr);
    EXPECT_EQ(running("com.google.Chrome").size(), 1U);
}

TEST_F(ProcessesTest, ThatCannotBeStartedByTheClientMayBeStartedByOthers) {
    auto broken = chrome();
    broken.startFailure = "L’applicazione è danneggiata.";
    mac().processes().install(chromePath, broken);
    EXPECT_TRUE(computer().files.fileExists(chromePath));
    EXPECT_EQ("L’applicazione è danneggiata.", failure(chromePath));
    EXPECT_EQ(Happenings{}, transcript());
    const auto process = mac().processes().start(chromePath);
    mac().runUntilIdle();
    EXPECT_NE(nullptr, application(process));
    EXPECT_EQ("L’applicazione è danneggiata.", failure(chromePath));
}

TEST_F(ProcessesTest, WithoutANameTellNone) {
    const auto process = mac().applications().add({"", "com.example.nameless"});
    mac().applications().openWindow(process, {"Finestra"});
    EXPECT_EQ(std::nullopt, application(process)->localizedName());
    EXPECT_EQ(std::nullopt, computer().windowList.copy(WindowListOption::all)->front().ownerName);
}

TEST_F(ProcessesTest, HasSafariAndNoOtherBrowser) {
    EXPECT_TRUE(computer().files.fileExists(safariPath));
    for (const char* path : {chromePath, edgePath, firefoxPath}) EXPECT_FALSE(computer().files.fileExists(path));
}

TEST_F(ProcessesTest, HandsTheArgumentsOnAsTheyStand) {
    mac().processes().install(chromePath, chrome());
    const Lines arguments{"--app=https://x/?q=\"a b\"$(ls)", "", "è\n"};
    const auto process = launch(chromePath, arguments);
    EXPECT_EQ(arguments, mac().processes().find(process)->origin().arguments);
    EXPECT_EQ(
        (Happenings{
            {ProcessEvent::started,
             chromePath,
             {{Field::pid, "501"}, {Field::argument, arguments[0]}, {Field::argument, ""}, {Field::argument, "è\n"}}},
        }),
        transcript());
}

TEST_F(ProcessesTest, ListAnApplicationAMomentAfterItsStartAndItsWindowLater) {
    mac().processes().install(chromePath, chrome());
    const auto process = launch(chromePath, {"--app=https://lezione"});
    EXPECT_TRUE(running("com.google.Chrome").empty());
    EXPECT_EQ(nullptr, application(process));
    mac().runFor(0.5);
    EXPECT_EQ(std::vector{process}, running("com.google.Chrome"));
    EXPECT_TRUE(mac().desktop().windows().empty());
    mac().runFor(0.5);
    ASSERT_EQ(1U, mac().desktop().windowsOf(process).size());
    EXPECT_EQ("https://lezione", mac().desktop().windowsOf(process).front().title);
    EXPECT_EQ(
        (Happenings{
            {ProcessEvent::started, chromePath, {{Field::pid, "501"}, {Field::argument, "--app=https://lezione"}}},
            {ApplicationEvent::started, "Google Chrome", {{Field::pid, "501"}}},
            {AppWindowEvent::opened,
             "https://lezione",
             {{Field::pid, "501"}, {Field::number, "1001"}, {Field::frame, "60 60 1200 780"}}},
            {ApplicationEvent::frontmost, "Google Chrome", {{Field::pid, "501"}}},
        }),
        transcript());
}

TEST_F(ProcessesTest, HandOverToTheInstanceThatRuns) {
    mac().processes().install(chromePath, chrome());
    const auto first = mac().processes().start(chromePath);
    mac().runFor(2);
    const auto second = launch(chromePath, {"--app=https://lezione"});
    mac().runFor(2);
    EXPECT_EQ(std::vector{first}, running("com.google.Chrome"));
    EXPECT_EQ(2U, mac().desktop().windowsOf(first).size());
    EXPECT_FALSE(mac().processes().find(second)->isAlive());
    EXPECT_EQ(Lines{chromePath}, texts(ProcessEvent::exited));
}

TEST_F(ProcessesTest, GoOnUnderAnotherIdentifierAfterAFork) {
    InstalledApplication forking = chrome();
    forking.forks = InstalledApplication::Fork{0.5, 3};
    mac().processes().install(chromePath, forking);
    const auto first = launch(chromePath);
    mac().runFor(1);
    EXPECT_EQ(nullptr, application(first));
    EXPECT_TRUE(running("com.google.Chrome").empty());
    mac().runFor(3);
    ASSERT_EQ(1U, running("com.google.Chrome").size());
    EXPECT_NE(first, running("com.google.Chrome").front());
    EXPECT_EQ(1U, mac().desktop().windowsOf(running("com.google.Chrome").front()).size());
}

TEST_F(ProcessesTest, ThatExitAtOnceAreNeverListed) {
    InstalledApplication broken = chrome();
    broken.exitsAfter = 0;
    mac().processes().install(chromePath, broken);
    const auto process = launch(chromePath);
    mac().runFor(5);
    EXPECT_EQ(nullptr, application(process));
    EXPECT_EQ(ProcessEvent::started, events().at(0).kind);
    EXPECT_EQ(ProcessEvent::exited, events().at(1).kind);
    EXPECT_EQ(2U, events().size());
}

TEST_F(ProcessesTest, WithoutABundleAreFoundByTheirIdentifierIfTheyAreApplications) {
    const auto anonymous = mac().applications().add({"Senza nome", {}});
    ApplicationDescription tool{"strumento", "com.example.tool"};
    tool.isApplication = false;
    const auto hidden = mac().applications().add(tool);
    EXPECT_NE(nullptr, application(anonymous));
    EXPECT_EQ(nullptr, application(hidden));
    EXPECT_TRUE(running("com.example.tool").empty());
    EXPECT_TRUE(computer().processLauncher.sendSignal(hidden, 9));
}

TEST_F(ProcessesTest, ThatDieTakeTheirWindowsAlong) {
    const auto process = mac().applications().add({"Google Chrome", "com.google.Chrome"});
    mac().applications().openWindow(process, {"Lezione"});
    const auto handle = application(process);
    EXPECT_TRUE(mac().processes().exit(process));
    EXPECT_TRUE(handle->isTerminated());
    EXPECT_TRUE(mac().desktop().windows().empty());
    EXPECT_EQ(Lines{"Lezione"}, texts(AppWindowEvent::closed));
    EXPECT_FALSE(handle->terminate());
    EXPECT_FALSE(mac().processes().exit(process));
    EXPECT_EQ(0, mac().applications().openWindow(process, {"Tardi"}));
}

TEST_F(ProcessesTest, ThatHaveEndedRefuseWhatTheyAreAsked) {
    const auto process = mac().applications().add({"Google Chrome", "com.google.Chrome"});
    const auto handle = application(process);
    mac().processes().exit(process);
    forgetEvents();
    EXPECT_FALSE(handle->activate(ActivationOptions::none));
    EXPECT_FALSE(handle->terminate());
    EXPECT_FALSE(handle->forceTerminate());
    mac().runUntilIdle();
    const Fields fields{{Field::pid, std::to_string(process)}, {Field::error, "no such process"}};
    const Fields activation{fields[0], {Field::options, "0"}, fields[1]};
    EXPECT_EQ((Happenings{{ApplicationEvent::activate, "Google Chrome", activation},
                          {ApplicationEvent::terminate, "Google Chrome", fields},
                          {ApplicationEvent::forceTerminate, "Google Chrome", fields}}),
              transcript());
}

TEST_F(ProcessesTest, CountAsGoneWhenTheyAreZombies) {
    ApplicationDescription left{"Google Chrome", "com.google.Chrome"};
    left.leavesZombie = true;
    const auto process = mac().applications().add(left);
    const auto handle = application(process);
    mac().processes().exit(process);
    EXPECT_TRUE(handle->isTerminated());
    EXPECT_EQ(nullptr, application(process));
    EXPECT_TRUE(running("com.google.Chrome").empty());
    EXPECT_TRUE(computer().processLauncher.sendSignal(process, 9));
}

TEST_F(ProcessesTest, AreKilledBySignalNineWhateverTheyIgnore) {
    ApplicationDescription stubborn{"Google Chrome", "com.google.Chrome", true};
    stubborn.ignoresForceTerminate = true;
    const auto process = mac().applications().add(stubborn);
    const auto handle = application(process);
    EXPECT_TRUE(handle->terminate());
    EXPECT_TRUE(handle->forceTerminate());
    EXPECT_TRUE(computer().processLauncher.sendSignal(process, 15));
    mac().runFor(10);
    EXPECT_FALSE(handle->isTerminated());
    EXPECT_TRUE(computer().processLauncher.sendSignal(process, 9));
    mac().runFor(0);
    EXPECT_TRUE(handle->isTerminated());
    EXPECT_FALSE(computer().processLauncher.sendSignal(process, 9));
    EXPECT_EQ((Lines{"15", "9", "9"}), texts(ProcessEvent::signal));
    EXPECT_EQ("no such process", events(ProcessEvent::signal).back().field(Field::error));
}

TEST_F(ProcessesTest, MayTakeTheirTimeToBeKilledOrRefuseTheForce) {
    ApplicationDescription slow{"Google Chrome", "com.google.Chrome"};
    slow.refusesForceTerminate = true;
    slow.killDelay = 3;
    const auto process = mac().applications().add(slow);
    const auto handle = application(process);
    EXPECT_FALSE(handle->forceTerminate());
    EXPECT_TRUE(computer().processLauncher.sendSignal(process, 9));
    mac().runFor(2.9);
    EXPECT_FALSE(handle->isTerminated());
    mac().runFor(0.2);
    EXPECT_TRUE(handle->isTerminated());
}

TEST_F(ProcessesTest, BehaveOtherwiseFromTheMomentTheyAreToldTo) {
    const auto process = mac().applications().add({"Google Chrome", "com.google.Chrome"});
    const auto handle = application(process);
    ApplicationDescription stubborn{"Altro", "com.example.other"};
    stubborn.ignoresTerminate = true;
    stubborn.refusesForceTerminate = true;
    stubborn.killDelay = 3;
    mac().processes().find(process)->behaveLike(stubborn);
    EXPECT_EQ("Google Chrome", handle->localizedName());
    EXPECT_EQ("com.google.Chrome", handle->bundleIdentifier());
    EXPECT_TRUE(handle->terminate());
    EXPECT_FALSE(handle->forceTerminate());
    mac().runFor(1);
    EXPECT_FALSE(handle->isTerminated());
    EXPECT_TRUE(computer().processLauncher.sendSignal(process, 9));
    mac().runFor(2.9);
    EXPECT_FALSE(handle->isTerminated());
    mac().runFor(0.2);
    EXPECT_TRUE(handle->isTerminated());
}

TEST_F(ProcessesTest, GoOnWhenTheirBundleIsUninstalled) {
    mac().processes().install(chromePath, chrome());
    const auto process = launch(chromePath);
    mac().runFor(1);
    mac().processes().uninstall(chromePath);
    EXPECT_FALSE(computer().files.fileExists("/Applications/Google Chrome.app"));
    EXPECT_TRUE(computer().files.fileExists("/Applications"));
    EXPECT_EQ("Il file “Google Chrome” non esiste.", failure(chromePath));
    EXPECT_EQ(std::vector{process}, running("com.google.Chrome"));
}

TEST_F(ProcessesTest, SurviveTheirLastWindowUnlessTheyDoNot) {
    const auto survivor = mac().applications().add({"Safari", "com.apple.Safari"});
    ApplicationDescription other{"Altro", "com.example.other"};
    other.exitsWithLastWindow = true;
    const auto mortal = mac().applications().add(other);
    const auto ofSurvivor = mac().applications().openWindow(survivor, {"a"});
    const auto first = mac().applications().openWindow(mortal, {"b"});
    const auto second = mac().applications().openWindow(mortal, {"c"});
    mac().desktop().close(ofSurvivor);
    mac().desktop().close(first);
    mac().runFor(1);
    EXPECT_NE(nullptr, application(mortal));
    mac().desktop().close(second);
    mac().runFor(1);
    EXPECT_EQ(nullptr, application(mortal));
    EXPECT_NE(nullptr, application(survivor));
}

class FrontmostTest : public ProcessesTest {
  protected:
    std::string frontmost() {
        std::string name;
        mac().onMain([&] {
            const auto front = computer().frontmostApplication.frontmostApplication();
            name = front ? front->localizedName().value_or("") : "nobody";
        });
        return name;
    }
};

TEST_F(FrontmostTest, IsWhoCameToTheFrontLastAndStillRuns) {
    EXPECT_EQ("nobody", frontmost());
    mac().onMain([&] { computer().application.activate(); });
    EXPECT_EQ("Vantrel", frontmost());
    const auto first = mac().applications().add({"Google Chrome", "com.google.Chrome"});
    EXPECT_EQ("Vantrel", frontmost());
    EXPECT_TRUE(application(first)->activate(ActivationOptions::none));
    EXPECT_EQ("Vantrel", frontmost());
    mac().runFor(0.11);
    EXPECT_EQ("Google Chrome", frontmost());
    mac().processes().exit(first);
    EXPECT_EQ("Vantrel", frontmost());
}

TEST_F(FrontmostTest, StaysWhereItIsWhenActivationIsDeclined) {
    ApplicationDescription shy{"Google Chrome", "com.google.Chrome"};
    shy.declinesActivation = true;
    const auto process = mac().applications().add(shy);
    EXPECT_TRUE(application(process)->activate(ActivationOptions::ignoringOtherApps));
    mac().runFor(1);
    EXPECT_EQ("nobody", frontmost());
    EXPECT_EQ(Lines{"Google Chrome"}, texts(ApplicationEvent::activate));
}

}  // namespace
}  // namespace vantrel::virtualmac
