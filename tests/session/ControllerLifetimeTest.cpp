#include <gmock/gmock.h>

#include "session/MainWindowController.h"
#include "tests/session/ClientTest.h"

namespace vantrel {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using virtualmac::NetworkAnswer;

/// A controller that is destroyed while something of it is pending: nothing keeps it alive, and nothing happens for it.
class ControllerLifetimeTest : public ClientTest {
  protected:
    std::weak_ptr<MainWindowController> make() {
        mac().onMain([this] {
            kept_ = MainWindowController::create(computer());
            kept_->window().makeKeyAndOrderFront();
        });
        return kept_;
    }

    void drop() {
        mac().onMain([this] { kept_.reset(); });
    }

    /// On the main thread.
    void forget() { kept_.reset(); }

    void pressAndDrop() {
        mac().onMain([this] {
            kept_->joinTapped();
            kept_.reset();
        });
    }

    /// Makes the main thread busy for a second, so that blocks collect in its queue, and drops the controller before
    /// they run.
    void dropBeforeWhatIsQueued() {
        mac().postToMain([this] {
            computer().threads.sleep(1);
            kept_.reset();
        });
        mac().runFor(2);
    }

  private:
    std::shared_ptr<MainWindowController> kept_;
};

TEST_F(ControllerLifetimeTest, ChecksNoVersionOnceItIsGone) {
    const auto controller = make();
    mac().runFor(0.5);
    drop();
    EXPECT_TRUE(controller.expired());
    mac().runFor(10);
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(ControllerLifetimeTest, ReadsNoVersionReplyOnceItIsGone) {
    answer(std::string("GET ") + server + "/api/version/latest",
           NetworkAnswer::reply(200, R"({"updateAvailable":true,"severity":"required"})", 1));
    const auto controller = make();
    mac().runFor(1.5);
    EXPECT_THAT(requests(), SizeIs(1));
    drop();
    EXPECT_TRUE(controller.expired());
    mac().runFor(10);
    EXPECT_THAT(logLines(), IsEmpty());
    EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(ControllerLifetimeTest, OffersNoUpdateOnceItIsGone) {
    answer(std::string("GET ") + server + "/api/version/latest",
           NetworkAnswer::reply(200, R"({"updateAvailable":true,"severity":"required","latestVersion":"3"})", 0.5));
    const auto controller = make();
    mac().runFor(1.2);
    dropBeforeWhatIsQueued();
    EXPECT_TRUE(controller.expired());
    EXPECT_THAT(logLines(), testing::ElementsAre("[UPDATE] Disponibile v3 (severity=required)"));
    EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(ControllerLifetimeTest, AsksForNoNewerClientOnceItIsGone) {
    answer(std::string("POST ") + server + "/api/sessions/NQRP5D/join",
           NetworkAnswer::reply(400, R"({"error":"client_outdated"})", 0.5));
    const auto controller = make();
    mac().runFor(2);
    join();
    mac().runFor(0.2);
    dropBeforeWhatIsQueued();
    mac().runFor(10);
    EXPECT_TRUE(controller.expired());
    EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(ControllerLifetimeTest, AsksForNoSessionOnceItIsGone) {
    const auto controller = make();
    mac().runFor(2);
    participant().type("sessionCodeField", "NQRP5D");
    mac().runFor(0);
    const auto before = requests().size();
    pressAndDrop();
    mac().runFor(10);
    EXPECT_TRUE(controller.expired());
    // With real threads the join's own thread may come first.
    if (!virtualmac::isFreeRunning()) {
        EXPECT_EQ(requests().size(), before);
    }
}

TEST_F(ControllerLifetimeTest, OpensNoBrowserAfterAPromptOnceItIsGone) {
    mac().capture().setStatus(MediaType::audio, AuthorizationStatus::notDetermined);
    const auto controller = make();
    mac().runFor(2);
    join();
    mac().runFor(2);
    ASSERT_EQ(mac().capture().prompts(), 1u);
    drop();
    EXPECT_TRUE(controller.expired());
    participant().answerPermissionPrompt(true);
    mac().runFor(10);
    EXPECT_EQ(logLines().back(), "[TCC] Microfono: ✅ concesso");
    EXPECT_THAT(events(ProcessEvent::started), IsEmpty());
}

/// The monitor's look is due while the controller's last reference is about to go.
TEST_F(ControllerLifetimeTest, EndsNoSessionOnceItIsGone) {
    const auto controller = make();
    mac().runFor(2);
    enterLockdown();
    mac().processes().exit(mac().processes().running("com.google.Chrome")->processIdentifier());
    mac().runFor(0);
    forgetEvents();
    mac().postToMain([this] {
        computer().threads.sleep(2);
        computer().dispatch.mainQueue().async([this] { forget(); });
    });
    mac().runFor(10);
    EXPECT_TRUE(controller.expired());
    for (const auto& line : logLines()) EXPECT_THAT(line, testing::Not(testing::StartsWith("[SESSION]")));
}

/// From the press of the join button into the complete lockdown, a moment every tenth of a second.
class ControllerAtAnyMoment : public ControllerLifetimeTest, public testing::WithParamInterface<int> {};

TEST_P(ControllerAtAnyMoment, LeavesNothingOfALockdownOnceItIsGone) {
    const auto controller = make();
    mac().runFor(2);
    join();
    mac().runFor(GetParam() * 0.1);
    dropBeforeWhatIsQueued();
    forgetEvents();
    mac().runFor(60);
    EXPECT_TRUE(controller.expired());
    const auto left = mac().leftovers();
    EXPECT_EQ(left.timers, 0u);
    EXPECT_EQ(left.observers, 0u);
    EXPECT_EQ(left.statusItems, 0u);
    EXPECT_EQ(left.overlays, 0u);
    EXPECT_EQ(left.keyboardTaps, 0u);
    EXPECT_EQ(left.requests, 0u);
    EXPECT_EQ(left.windows, 0u);
    if (virtualmac::isFreeRunning()) {
        // The launch may still hold its launcher when that one's own first attempt is due.
        EXPECT_THAT(logLines(), testing::Each(testing::StartsWith("[FULLSCREEN] ")));
    } else {
        EXPECT_THAT(logLines(), IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Lockdown, ControllerAtAnyMoment, testing::Range(0, 60));

TEST_F(ControllerLifetimeTest, DiesOnTheMainThreadAfterAJoinThatOutlivesIt) {
    answer(std::string("GET ") + server + "/api/sessions/NQRP5D", NetworkAnswer::reply(404, "", 3));
    const auto controller = make();
    mac().runFor(2);
    join();
    mac().runFor(1);
    drop();
    // The join's thread still holds it. Its last reference must go to the main queue, or the window would complain.
    mac().runFor(10);
    EXPECT_TRUE(controller.expired());
    EXPECT_THAT(mac().windows().all(), IsEmpty());
}

}  // namespace
}  // namespace vantrel
