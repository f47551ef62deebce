#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <thread>

#include "app/ApplicationMain.h"
#include "tests/session/ClientTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LifecycleTest : public ClientTest {};

TEST_F(LifecycleTest, ShowsItsWindowAndSaysThatItRuns) {
    mac().launch([](Computer& computer) { applicationMain(computer); });
    mac().runFor(0);
    EXPECT_THAT(texts(ClientEvent::activationPolicy), ElementsAre("0"));
    EXPECT_THAT(logLines(), ElementsAre("[APP] Vantrel avviato"));
    EXPECT_EQ(screen(), "joinView");
    std::vector<EventKind> order;
    for (const auto& event : events()) {
        if (event.kind.isA<WindowEvent>() || event.kind == ClientEvent::activate || event.kind == ClientEvent::log)
            order.push_back(event.kind);
    }
    EXPECT_THAT(order, ElementsAre(WindowEvent::centered, WindowEvent::shown, WindowEvent::key, ClientEvent::activate,
                                   ClientEvent::log));
}

TEST_F(LifecycleTest, QuitsAtOnceOnTheJoinScreen) {
    launch();
    participant().pressCommand("q");
    mac().runFor(0);
    EXPECT_FALSE(mac().isRunning());
}

TEST_F(LifecycleTest, QuitsAtOnceOnTheEndScreen) {
    launch();
    enterLockdown();
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(10);
    ASSERT_EQ(screen(), "endView");
    forgetEvents();
    participant().pressCommand("q");
    mac().runFor(0);
    EXPECT_FALSE(mac().isRunning());
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(LifecycleTest, RefusesToQuitInALockdownByWhateverRoute) {
    launch();
    enterLockdown();
    forgetEvents();
    participant().logOut();
    mac().runFor(1);
    participant().openMainMenu("");
    mac().runFor(1);
    participant().chooseMenuItem("Esci da Vantrel");
    mac().runFor(1);
    EXPECT_THAT(logLines(), IsEmpty());
    EXPECT_EQ(texts(ClientEvent::terminateRefused).size(), 2u);
    // The key does not even arrive there.
    participant().pressCommand("q");
    mac().runFor(1);
    EXPECT_EQ(texts(ClientEvent::terminateRefused).size(), 2u);
    EXPECT_THAT(logLines(), ElementsAre("[HOOK] 🚫 Bloccato: Cmd+Q"));
    EXPECT_TRUE(mac().isRunning());
    EXPECT_EQ(screen(), "none");
}

TEST_F(LifecycleTest, RefusesToQuitByTheKeyInALockdownWithoutAHook) {
    mac().keyboard().refuse(virtualmac::VirtualKeyboardTaps::always);
    launch();
    enterLockdown();
    participant().pressCommand("q");
    mac().runFor(1);
    EXPECT_EQ(texts(ClientEvent::terminateRefused).size(), 1u);
    EXPECT_TRUE(mac().isRunning());
}

TEST_F(LifecycleTest, StaysWhenItsWindowIsClosed) {
    launch();
    participant().closeWindow();
    mac().runFor(10);
    EXPECT_TRUE(mac().isRunning());
    EXPECT_EQ(screen(), "none");
    participant().pressCommand("q");
    mac().runFor(0);
    EXPECT_FALSE(mac().isRunning());
}

TEST_F(LifecycleTest, EndsASecondInstanceAfterItsAlert) {
    mac().applications().add({"Vantrel", "biz.quorrin.vantrel"});
    launch();
    const auto up = mac().alerts().up();
    ASSERT_EQ(up.size(), 1u);
    EXPECT_EQ(up[0].style, AlertStyle::informational);
    EXPECT_EQ(up[0].messageText, "Vantrel è già in esecuzione.");
    EXPECT_EQ(up[0].informativeText, "");
    EXPECT_THAT(up[0].buttons, ElementsAre("OK"));
    EXPECT_TRUE(mac().windows().all().empty());
    participant().answerAlert("OK");
    mac().runFor(10);
    EXPECT_FALSE(mac().isRunning());
    EXPECT_THAT(logLines(), IsEmpty());
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(LifecycleTest, LetsAnotherApplicationRunBesideIt) {
    mac().applications().add({"Altro", "com.example.other"});
    launch();
    EXPECT_EQ(screen(), "joinView");
}

class UnbundledTest : public ClientTest {
  protected:
    static virtualmac::Options unbundled() {
        auto options = returningParticipant();
        options.bundleIdentifier.reset();
        return options;
    }
    UnbundledTest() : ClientTest(unbundled()) {}
};

TEST_F(UnbundledTest, CountsInstancesUnderItsOwnIdentifier) {
    mac().applications().add({"Vantrel", "biz.quorrin.vantrel"});
    mac().applications().add({"Vantrel", "biz.quorrin.vantrel"});
    launch();
    EXPECT_THAT(alerts(), ElementsAre("Vantrel è già in esecuzione."));
}

TEST_F(UnbundledTest, RunsAloneWithoutABundle) {
    launch();
    EXPECT_EQ(screen(), "joinView");
}

TEST_F(LifecycleTest, CannotBeStartedOffTheMainThread) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            virtualmac::VirtualMac other;
            other.inBackground([&other] {
                applicationMain(other.computer());
                // Only a client that goes on comes here.
                std::_Exit(0);
            });
            other.runFor(1);
        },
        testing::KilledBySignal(SIGABRT),
        "^Fatal error: Incorrect actor executor assumption; Expected same executor as MainActor.\n$");
}

}  // namespace
}  // namespace vantrel
