#include <mutex>
#include <string>
#include <vector>

#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

class OpenerTest : public MacTest {
  protected:
    void open(const std::string& application = "file:///Applications/Safari.app") {
        computer().applicationOpener.open(
            {URL{"https://lezione/"}}, URL{application}, true, [this](const auto& result) {
                EXPECT_FALSE(computer().threads.isMainThread());
                if (const auto* error = std::get_if<PlatformError>(&result)) {
                    return computer().log.print(error->localizedDescription);
                }
                const auto& running = std::get<std::shared_ptr<RunningApplication>>(result);
                computer().log.print(running ? std::to_string(running->processIdentifier()) : "nobody");
            });
    }
};

TEST_F(OpenerTest, StartsSafariAndTellsItsProcess) {
    open();
    EXPECT_EQ((Happenings{
                  {ApplicationEvent::opened,
                   "https://lezione/",
                   {{Field::application, "file:///Applications/Safari.app"}, {Field::activates, "yes"}}},
                  {ProcessEvent::started,
                   "/Applications/Safari.app/Contents/MacOS/Safari",
                   {{Field::pid, "501"}, {Field::argument, "https://lezione/"}}},
              }),
              transcript());
    mac().runUntilIdle();
    EXPECT_EQ(Lines{"501"}, logLines());
    ASSERT_EQ(1U, mac().desktop().windowsOf(501).size());
    EXPECT_EQ("https://lezione/", mac().desktop().windowsOf(501).front().title);
    EXPECT_EQ(501, mac().desktop().front().front().process);
}

TEST_F(OpenerTest, UsesTheSafariThatRuns) {
    const auto safari = mac().applications().add({"Safari", "com.apple.Safari"});
    open();
    mac().runUntilIdle();
    EXPECT_EQ(Lines{std::to_string(safari)}, logLines());
    EXPECT_EQ(1U, mac().desktop().windowsOf(safari).size());
    EXPECT_TRUE(events(ProcessEvent::started).empty());
}

TEST_F(OpenerTest, FailsForAnApplicationThatIsNotInstalled) {
    mac().files().remove("/Applications/Safari.app");
    open();
    mac().runUntilIdle();
    open("file:///Applications/Google%20Chrome.app/");
    mac().runUntilIdle();
    EXPECT_EQ((Lines{"L’applicazione “Safari” non può essere aperta.",
                     "L’applicazione “Google Chrome” non può essere aperta."}),
              logLines());
    EXPECT_TRUE(events(ProcessEvent::started).empty());
}

TEST_F(OpenerTest, FailsForAnApplicationThatCannotBeStartedButNotForOneThatRuns) {
    auto broken = safari();
    broken.startFailure = "L’applicazione è danneggiata.";
    mac().processes().install(safariPath, broken);
    open();
    mac().runUntilIdle();
    EXPECT_EQ(Lines{"L’applicazione è danneggiata."}, logLines());
    EXPECT_TRUE(events(ProcessEvent::started).empty());
    const auto running = mac().processes().start(safariPath);
    mac().runUntilIdle();
    open();
    mac().runUntilIdle();
    EXPECT_EQ(std::to_string(running), logLines().back());
}

TEST_F(OpenerTest, AnswersWhenAndAsItIsToldTo) {
    mac().opener().setAnswerDelay(9);
    mac().opener().answerWithoutApplication(true);
    open();
    mac().runUntilIdle();
    EXPECT_EQ(9.0, mac().now());
    EXPECT_EQ(Lines{"nobody"}, logLines());
    EXPECT_EQ(1U, mac().desktop().windows().size());
    mac().opener().failWith("Impossibile aprire.");
    open();
    mac().runUntilIdle();
    EXPECT_EQ((Lines{"nobody", "Impossibile aprire."}), logLines());
    EXPECT_EQ(1U, mac().desktop().windows().size());
}

}  // namespace
}  // namespace vantrel::virtualmac
