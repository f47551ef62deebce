#include <mutex>
#include <string>

#include "platform/threads/Lock.h"
#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

class AlertsTest : public MacTest {
  protected:
    void show(const std::string& message, std::vector<std::string> buttons) {
        mac().postToMain([this, message, buttons = std::move(buttons)] {
            const auto index = computer().alerts.runModal({AlertStyle::critical, message, "Perché", buttons});
            computer().log.print(message + " " + std::to_string(index));
        });
        mac().runFor(1);
    }
};

TEST_F(AlertsTest, ReturnsTheIndexOfTheButtonThatWasPressed) {
    show("Uno", {"Sì", "No"});
    participant().answerAlert("No");
    mac().runFor(0);
    EXPECT_EQ((Happenings{
                  {AlertEvent::shown,
                   "Uno",
                   {{Field::style, "critical"},
                    {Field::information, "Perché"},
                    {Field::button, "Sì"},
                    {Field::button, "No"}}},
                  {Deed::answerAlert, "No"},
                  {AlertEvent::answered, "No", {{Field::message, "Uno"}}},
                  {ClientEvent::log, "Uno 1"},
              }),
              transcript());
}

TEST_F(AlertsTest, HasAnOKButtonWhenNoneWasAskedFor) {
    show("Uno", {});
    participant().pressReturn();
    mac().runFor(0);
    EXPECT_EQ(Lines{"Uno 0"}, logLines());
}

TEST_F(AlertsTest, AnswersTheOneInFront) {
    show("Uno", {"A", "B"});
    show("Due", {"A", "C"});
    participant().answerAlert("B");
    mac().runFor(0);
    EXPECT_EQ("the alert has no such button", events<Deed>().at(0).field(Field::ignored));
    participant().answerAlert("A");
    mac().runFor(0);
    EXPECT_EQ(Lines{"Due 0"}, logLines());
    participant().answerAlert("B");
    mac().runFor(0);
    EXPECT_EQ((Lines{"Due 0", "Uno 1"}), logLines());
    participant().answerAlert("A");
    mac().runFor(0);
    EXPECT_EQ("no alert is up", events<Deed>().back().field(Field::ignored));
}

TEST_F(AlertsTest, KeepsTheParticipantFromEverythingElse) {
    show("Uno", {});
    for (const auto& deed : std::vector<std::function<void()>>{
             [&] { participant().type("x", "y"); }, [&] { participant().press("x"); },
             [&] { participant().pressCommand("q"); }, [&] { participant().closeWindow(); },
             [&] { participant().openStatusMenu(); }, [&] { participant().openMainMenu("Edit"); }}) {
        forgetEvents();
        deed();
        mac().runFor(0);
        ASSERT_EQ(1U, events().size());
        EXPECT_EQ("an alert is up", events().front().field(Field::ignored));
    }
}

class UnseenAlertsTest : public AlertsTest {
  protected:
    /// Another application in full screen, and an alert of a client without a window.
    void showOverFullScreen(AlertsLetIn letIn) {
        mac().alerts().setLetIn(letIn);
        const auto note = mac().processes().add({"Note", "com.example.notes"});
        mac().desktop().setFullScreen(mac().processes().openWindow(note, {"Appunti"}), true);
        mac().runFor(2);
        forgetEvents();
        mac().postToMain([this] {
            computer().alerts.runModal({AlertStyle::warning, "Uno", "", {"A"}});
            computer().log.print("answered");
        });
        mac().runFor(0.5);
    }

    /// What is told of the alert, in order.
    std::vector<AlertEvent> told() {
        std::vector<AlertEvent> kinds;
        for (const Happening& event : transcript()) {
            for (const AlertEvent kind :
                 {AlertEvent::shown, AlertEvent::unseen, AlertEvent::seen, AlertEvent::orderedFront,
                  AlertEvent::joinsAll, AlertEvent::answered, AlertEvent::stopped}) {
                if (event.kind == EventKind(kind)) kinds.push_back(kind);
            }
        }
        return kinds;
    }

    void press() {
        participant().answerAlert("A");
        mac().runFor(0);
    }
};

TEST_F(UnseenAlertsTest, AnAlertThatIsLetInAtOnceIsLeftAsItIs) {
    showOverFullScreen(AlertsLetIn::atOnce);
    mac().runFor(5);
    press();
    EXPECT_EQ((std::vector{AlertEvent::shown, AlertEvent::answered}), told());
}

TEST_F(UnseenAlertsTest, AnAlertIsOrderedToTheFrontOnceItHasNotBeenSeenForASecond) {
    showOverFullScreen(AlertsLetIn::orderedFront);
    press();
    EXPECT_EQ("nobody sees the alert", events<Deed>().back().field(Field::ignored));
    mac().runFor(0.499);
    EXPECT_EQ((std::vector{AlertEvent::shown, AlertEvent::unseen}), told());
    mac().runFor(0.001);
    press();
    EXPECT_EQ((std::vector{AlertEvent::shown, AlertEvent::unseen, AlertEvent::joinsAll, AlertEvent::orderedFront,
                           AlertEvent::seen, AlertEvent::answered}),
              told());
}

TEST_F(UnseenAlertsTest, AnAlertMayJoinAllApplicationsBeforeThat) {
    showOverFullScreen(AlertsLetIn::joiningAll);
    mac().runFor(0.5);
    press();
    EXPECT_EQ((std::vector{AlertEvent::shown, AlertEvent::unseen, AlertEvent::joinsAll, AlertEvent::seen,
                           AlertEvent::orderedFront, AlertEvent::answered}),
              told());
}

TEST_F(UnseenAlertsTest, AnAlertThatIsNeverLetInIsSeenOnceTheFullScreenIsLeft) {
    showOverFullScreen(AlertsLetIn::never);
    mac().runFor(1);
    press();
    EXPECT_EQ("nobody sees the alert", events<Deed>().back().field(Field::ignored));
    mac().spaces().swipe(VirtualSpaces::Direction::left);
    mac().runFor(100);
    press();
    EXPECT_EQ(Lines{"answered"}, logLines());
    EXPECT_EQ((std::vector{AlertEvent::shown, AlertEvent::unseen, AlertEvent::joinsAll, AlertEvent::orderedFront,
                           AlertEvent::seen, AlertEvent::answered}),
              told());
}

TEST_F(UnseenAlertsTest, AnAlertMayBeSeenOnlyWithTheClientInFront) {
    showOverFullScreen(AlertsLetIn::withClient);
    mac().runFor(1.4);
    EXPECT_FALSE(mac().activations().isClientInFront());
    mac().runFor(0.2);
    press();
    EXPECT_EQ((std::vector{AlertEvent::shown, AlertEvent::unseen, AlertEvent::joinsAll, AlertEvent::orderedFront,
                           AlertEvent::orderedFront, AlertEvent::seen, AlertEvent::answered}),
              told());
    mac().runFor(1);
    EXPECT_FALSE(mac().activations().isClientInFront());
}

TEST_F(UnseenAlertsTest, AnAlertThatNobodyCanSeeForTenSecondsEndsAsItsLastButton) {
    showOverFullScreen(AlertsLetIn::never);
    mac().runFor(9.4);
    EXPECT_EQ(Lines{}, logLines());
    mac().runFor(0.1);
    EXPECT_EQ(Lines{"answered"}, logLines());
    EXPECT_EQ(AlertEvent::stopped, told().back());
    EXPECT_EQ(0U, mac().leftovers().alerts);
}

TEST_F(UnseenAlertsTest, AnAlertThatWasSeenMeanwhileHasItsTenSecondsAnew) {
    showOverFullScreen(AlertsLetIn::never);
    mac().runFor(8);
    mac().spaces().swipe(VirtualSpaces::Direction::left);
    mac().runFor(2);
    mac().spaces().swipe(VirtualSpaces::Direction::right);
    mac().runFor(8);
    EXPECT_EQ(Lines{}, logLines());
    mac().runFor(3);
    EXPECT_EQ(Lines{"answered"}, logLines());
}

TEST_F(UnseenAlertsTest, AnAlertAnsweredInTheFirstSecondIsNotOrderedToTheFrontLater) {
    showOverFullScreen(AlertsLetIn::orderedFront);
    mac().spaces().swipe(VirtualSpaces::Direction::left);
    press();
    mac().spaces().swipe(VirtualSpaces::Direction::right);
    mac().runFor(5);
    EXPECT_EQ((std::vector{AlertEvent::shown, AlertEvent::unseen, AlertEvent::seen, AlertEvent::answered}), told());
    EXPECT_EQ(0U, mac().leftovers().timers);
}

TEST_F(UnseenAlertsTest, TheFrontIsGivenBackAfterAnAnswerThatHasTakenIt) {
    mac().alerts().setActivating(true);
    showOverFullScreen(AlertsLetIn::atOnce);
    press();
    mac().runFor(1);
    Lines fronts;
    for (const Happening& event : events<ApplicationEvent>()) {
        if (event.kind == EventKind(ApplicationEvent::frontmost)) fronts.push_back(event.text);
    }
    EXPECT_EQ((Lines{"Vantrel", "Note"}), fronts);
}

TEST_F(AlertsTest, RefusesToBeShownOffTheMainThread) {
    expectMisuse();
    mac().inBackground([this] { computer().alerts.runModal({AlertStyle::warning, "Uno", "", {}}); });
    mac().runFor(1);
    EXPECT_EQ(Lines{"Alerts.runModal off the main thread"}, expectedMisuse());
}

TEST_F(AlertsTest, AreGivenUpUnderALock) {
    expectMisuse();
    mac().postToMain([this] {
        std::size_t answer = 0;
        {
            Lock lock;
            const std::scoped_lock guard(lock);
            answer = computer().alerts.runModal({AlertStyle::warning, "Uno", "", {"A", "B"}});
        }
        computer().log.print("went on with " + std::to_string(answer));
    });
    mac().runFor(1);
    EXPECT_EQ(Lines{"a wait with a lock held"}, expectedMisuse());
    EXPECT_EQ(Lines{"went on with 1"}, logLines());
    EXPECT_EQ(0U, mac().leftovers().alerts);
}

TEST_F(AlertsTest, AreAnsweredWithTheLastButtonWhenTheMacIsDrained) {
    show("Uno", {"A", "B", "C"});
    show("Due", {"A", "B"});
    mac().drain();
    EXPECT_EQ((Lines{"Due 1", "Uno 2"}), logLines());
    EXPECT_EQ(0U, mac().leftovers().alerts);
}

TEST_F(AlertsTest, DoNotKeepTheMacFromEnding) {
    show("Uno", {"A", "B"});
    end();
    EXPECT_EQ(Lines{}, logLines());
}

TEST_F(AlertsTest, AreMisuseAtTheEndWhenThatWasAskedFor) {
    Lines misuse;
    Options options = optionsFromEnvironment();
    options.reportLeftovers = true;
    options.onMisuse = [&](const std::string& what) { misuse.push_back(what); };
    {
        VirtualMac mac(options);
        mac.postToMain([&] { mac.computer().alerts.runModal({AlertStyle::warning, "Uno", "", {}}); });
        mac.runFor(1);
    }
    EXPECT_EQ(Lines{"the Mac ends with an alert up or a menu open"}, misuse);
}

TEST_F(AlertsTest, KeepABlockThatWaitsForThemFromFinishing) {
    expectMisuse();
    EXPECT_FALSE(mac().onMain([&] { computer().alerts.runModal({AlertStyle::warning, "Uno", "", {}}); }));
    ASSERT_EQ(1U, expectedMisuse().size());
    EXPECT_NE(std::string::npos, expectedMisuse().front().find("onMain"));
}

}  // namespace
}  // namespace vantrel::virtualmac
