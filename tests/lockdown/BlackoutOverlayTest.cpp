#include <gmock/gmock.h>

#include "lockdown/BlackoutOverlayManager.h"
#include "session/MainThreadOwned.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

const Screen builtIn{"Display integrato", {{0, 0}, {1440, 900}}};
const Screen beside{"Monitor A", {{1440, -120.5}, {1920, 1080}}};
const Screen above{"Monitor B", {{-200, 900}, {1280, 1024}}};
constexpr const char* rebuilding = "[BLACKOUT] Cambio configurazione display — ricreo overlay";
constexpr const char* none = "[BLACKOUT] Nessun monitor secondario — sistema single-monitor";

class BlackoutOverlay : public virtualmac::MacTest {
  protected:
    void SetUp() override {
        mac().onMain([this] {
            auto& mac = computer();
            manager_ = makeMainThreadOwned<BlackoutOverlayManager>(mac.dispatch, mac.threads, mac.screens, mac.overlays,
                                                                   mac.mainRunLoop, mac.log);
        });
    }
    void TearDown() override {
        release();
        MacTest::TearDown();
    }

    void setUpScreens(std::vector<Screen> screens, std::size_t main = 0) {
        mac().screens().setUp({std::move(screens), main, true});
    }
    void change(std::vector<Screen> screens, std::size_t main = 0) {
        mac().screens().change({std::move(screens), main, true});
        mac().runFor(0.01);
    }
    void activate() {
        mac().onMain([this] { manager_->activate(computer().screens.mainScreen()); });
    }
    void activateWithout() {
        mac().onMain([this] { manager_->activate(std::nullopt); });
    }
    void deactivate() {
        mac().onMain([this] { manager_->deactivate(); });
    }
    void release() {
        mac().onMain([this] { manager_.reset(); });
    }
    BlackoutOverlayManager& manager() { return *manager_; }
    std::vector<virtualmac::VirtualOverlays::State> overlays() { return mac().overlays().all(); }
    std::vector<Rect> frames() {
        std::vector<Rect> all;
        for (const auto& overlay : overlays()) all.push_back(overlay.description.frame);
        return all;
    }

  private:
    std::shared_ptr<BlackoutOverlayManager> manager_;
};

TEST_F(BlackoutOverlay, CoversEveryDisplayButTheMainOne) {
    setUpScreens({builtIn, beside, above});
    activate();
    EXPECT_THAT(frames(), ElementsAre(beside.frame, above.frame));
    for (const auto& overlay : overlays()) EXPECT_TRUE(overlay.visible);
    EXPECT_THAT(logLines(), ElementsAre("[BLACKOUT] Coperto monitor Monitor A (1440.0, -120.5, 1920.0, 1080.0)",
                                        "[BLACKOUT] Coperto monitor Monitor B (-200.0, 900.0, 1280.0, 1024.0)",
                                        "[BLACKOUT] Attivato — escluso: Display integrato, coperti: 2"));
    EXPECT_EQ(manager().windowCount(), 2u);
}

TEST_F(BlackoutOverlay, LeavesTheDisplayWithTheFocusWhicheverItIs) {
    setUpScreens({builtIn, beside, above}, 2);
    activate();
    EXPECT_THAT(frames(), ElementsAre(builtIn.frame, beside.frame));
    EXPECT_THAT(logLines(), Contains("[BLACKOUT] Attivato — escluso: Monitor B, coperti: 2"));
}

TEST_F(BlackoutOverlay, OfASingleDisplayCoversNothing) {
    activate();
    EXPECT_THAT(overlays(), IsEmpty());
    EXPECT_THAT(logLines(), ElementsAre(none, "[BLACKOUT] Attivato — escluso: Display integrato, coperti: 0"));
    EXPECT_TRUE(manager().isActive());
}

TEST_F(BlackoutOverlay, WithoutAnExcludedDisplayCoversAll) {
    setUpScreens({builtIn, beside});
    activateWithout();
    EXPECT_THAT(frames(), ElementsAre(builtIn.frame, beside.frame));
    EXPECT_THAT(logLines(), Contains("[BLACKOUT] Attivato — escluso: ?, coperti: 2"));
}

TEST_F(BlackoutOverlay, IsNotNeededWhereTheDisplaysShareOneSpace) {
    mac().screens().setUp({{builtIn, beside}, 0, false});
    activate();
    EXPECT_TRUE(manager().isActive());
    EXPECT_THAT(overlays(), IsEmpty());
    EXPECT_EQ(mac().leftovers().timers, 0u);
    EXPECT_EQ(mac().leftovers().observers, 0u);
    change({builtIn});
    deactivate();
    EXPECT_THAT(logLines(), ElementsAre("[BLACKOUT] Modalità 'shared spaces' attiva — overlay non necessario",
                                        "[BLACKOUT] Overlay deattivato"));
}

TEST_F(BlackoutOverlay, IsActivatedOnce) {
    setUpScreens({builtIn, beside});
    activate();
    activate();
    EXPECT_THAT(overlays(), SizeIs(1));
    EXPECT_EQ(mac().leftovers().timers, 1u);
    EXPECT_EQ(mac().leftovers().observers, 1u);
}

TEST_F(BlackoutOverlay, IsDeactivatedOnceAndLeavesNothing) {
    setUpScreens({builtIn, beside});
    EXPECT_FALSE(manager().isActive());
    activate();
    EXPECT_TRUE(manager().isActive());
    deactivate();
    EXPECT_FALSE(manager().isActive());
    deactivate();
    EXPECT_THAT(overlays(), IsEmpty());
    EXPECT_EQ(manager().windowCount(), 0u);
    EXPECT_EQ(mac().leftovers().timers, 0u);
    EXPECT_EQ(mac().leftovers().observers, 0u);
    EXPECT_EQ(logLines().back(), "[BLACKOUT] Overlay deattivato");
    EXPECT_THAT(logLines(), SizeIs(3));
    forgetEvents();
    change({builtIn, above});
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(BlackoutOverlay, ReleasedWhileActiveLeavesNothing) {
    setUpScreens({builtIn, beside});
    activate();
    release();
    mac().runFor(10);
    EXPECT_THAT(overlays(), IsEmpty());
    EXPECT_EQ(mac().leftovers().timers, 0u);
    EXPECT_EQ(mac().leftovers().observers, 0u);
}

TEST_F(BlackoutOverlay, IsAWindowAboveEverythingOnAllSpaces) {
    setUpScreens({builtIn, beside});
    activate();
    const auto shown = overlays().at(0).description;
    EXPECT_EQ(shown.level, 1000);
    EXPECT_EQ(shown.collectionBehavior, 0x51u);
}

TEST_F(BlackoutOverlay, ShowsALockTheNameAndWhatItIsFor) {
    setUpScreens({builtIn, beside});
    activate();
    const auto labels = overlays().at(0).description.labels;
    ASSERT_EQ(labels.size(), 4u);
    const auto expect = [&](std::size_t place, const char* text, double size, bool bold, double white, double y) {
        EXPECT_EQ(labels.at(place).text, text);
        EXPECT_EQ(labels.at(place).fontSize, size);
        EXPECT_EQ(labels.at(place).bold, bold);
        EXPECT_EQ(labels.at(place).whiteLevel, white);
        EXPECT_EQ(labels.at(place).centreX, 960);
        EXPECT_EQ(labels.at(place).y, y);
    };
    expect(0, "🔒", 64, false, 0.47, 620);
    expect(1, "Vantrel", 28, true, 0.71, 560);
    expect(2, "Sessione di formazione protetta in corso", 13, false, 0.55, 530);
    expect(3, "Lo schermo principale è bloccato sulla riunione Meet.\nQuesto monitor è temporaneamente disabilitato.",
           11, false, 0.37, 470);
    EXPECT_EQ(labels.at(0).fixedSize, Size());
    EXPECT_EQ(labels.at(3).fixedSize, (Size{500, 40}));
}

TEST_F(BlackoutOverlay, TakesADisplayWithinOnePointForTheExcludedOne) {
    setUpScreens({{"Quasi", {{0.9, -0.9}, {1440.9, 899.1}}}, beside});
    mac().onMain([this] { manager().activate(builtIn); });
    EXPECT_THAT(frames(), ElementsAre(beside.frame));
}

class OnePointOff : public BlackoutOverlay, public testing::WithParamInterface<Rect> {};

TEST_P(OnePointOff, IsAnotherDisplay) {
    setUpScreens({{"Altro", GetParam()}});
    mac().onMain([this] { manager().activate(builtIn); });
    EXPECT_THAT(overlays(), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Each, OnePointOff,
                         testing::Values(Rect{{1, 0}, {1440, 900}}, Rect{{0, -1}, {1440, 900}},
                                         Rect{{0, 0}, {1441, 900}}, Rect{{0, 0}, {1440, 899}}));

TEST_F(BlackoutOverlay, IsRaisedEveryThreeSeconds) {
    setUpScreens({builtIn, beside});
    activate();
    virtualmac::ApplicationDescription description;
    description.name = "Note";
    virtualmac::NewWindow cover{"Sopra", {{1500, 0}, {800, 600}}};
    cover.layer = 1000;
    const auto number = mac().processes().openWindow(mac().processes().add(description), cover);
    const auto isCovered = [&] { return overlays().at(0).isUnder(*mac().desktop().window(number)); };
    mac().runFor(2.9);
    EXPECT_TRUE(isCovered());
    mac().runFor(0.2);
    EXPECT_FALSE(isCovered());
}

TEST_F(BlackoutOverlay, ThatSomebodyClosesComesBackWithinThreeSeconds) {
    setUpScreens({builtIn, beside});
    activate();
    mac().runFor(1);
    ASSERT_TRUE(mac().overlays().closeShown(beside.frame));
    mac().runFor(1.9);
    EXPECT_FALSE(overlays().at(0).visible);
    mac().runFor(0.1);
    EXPECT_TRUE(overlays().at(0).visible);
    EXPECT_THAT(overlays(), SizeIs(1));
}

TEST_F(BlackoutOverlay, IsPutBackOnItsLevelEveryThreeSeconds) {
    setUpScreens({builtIn, beside, above});
    activate();
    mac().overlays().forceLevel(0);
    mac().runFor(2.9);
    EXPECT_EQ(overlays().at(0).description.level, 0);
    mac().runFor(0.2);
    EXPECT_EQ(overlays().at(0).description.level, 1000);
    EXPECT_EQ(overlays().at(1).description.level, 1000);
}

TEST_F(BlackoutOverlay, IsTakenFromTheScreenBeforeItIsClosed) {
    setUpScreens({builtIn, beside});
    activate();
    change({builtIn, above});
    deactivate();
    std::vector<EventKind> order;
    for (const auto& event : events<OverlayEvent>()) order.push_back(event.kind);
    EXPECT_THAT(order, ElementsAre(OverlayEvent::shown, OverlayEvent::hidden, OverlayEvent::closed, OverlayEvent::shown,
                                   OverlayEvent::hidden, OverlayEvent::closed));
}

TEST_F(BlackoutOverlay, FollowsADisplayThatIsPluggedIn) {
    setUpScreens({builtIn});
    activate();
    forgetEvents();
    change({builtIn, beside});
    EXPECT_THAT(frames(), ElementsAre(beside.frame));
    EXPECT_THAT(logLines(),
                ElementsAre(rebuilding, "[BLACKOUT] Coperto monitor Monitor A (1440.0, -120.5, 1920.0, 1080.0)"));
}

TEST_F(BlackoutOverlay, FollowsADisplayThatIsUnplugged) {
    setUpScreens({builtIn, beside});
    activate();
    forgetEvents();
    change({builtIn});
    EXPECT_THAT(overlays(), IsEmpty());
    EXPECT_THAT(logLines(), ElementsAre(rebuilding, none));
}

TEST_F(BlackoutOverlay, LeavesTheExcludedDisplayThoughAnotherOneHasTheFocusByThen) {
    setUpScreens({builtIn, beside});
    activate();
    change({builtIn, beside, above}, 1);
    EXPECT_THAT(frames(), ElementsAre(beside.frame, above.frame));
}

TEST_F(BlackoutOverlay, KnowsTheExcludedDisplayWithinOnePointAtAChange) {
    setUpScreens({builtIn, beside});
    activate();
    change({{"Display integrato", {{0.9, -0.9}, {1440.9, 899.1}}}, beside}, 1);
    EXPECT_THAT(frames(), ElementsAre(beside.frame));
}

TEST_F(BlackoutOverlay, TakesADisplayOnePointOffForAnotherOneAtAChange) {
    setUpScreens({builtIn, beside});
    activate();
    const Rect moved{{0, 0}, {1441, 900}};
    change({{"Display integrato", moved}, beside}, 1);
    EXPECT_THAT(frames(), ElementsAre(moved));
}

TEST_F(BlackoutOverlay, FallsBackToTheMainDisplayWhenTheExcludedOneIsUnplugged) {
    setUpScreens({builtIn, beside, above});
    activate();
    change({beside, above}, 1);
    EXPECT_THAT(frames(), ElementsAre(beside.frame));
    // That display stays uncovered when the excluded one returns.
    change({builtIn, beside, above}, 0);
    EXPECT_THAT(frames(), ElementsAre(builtIn.frame, beside.frame));
}

TEST_F(BlackoutOverlay, WithNoDisplayLeftExcludesNone) {
    setUpScreens({builtIn});
    activate();
    change({}, 0);
    EXPECT_THAT(overlays(), IsEmpty());
    EXPECT_EQ(logLines().back(), none);
    // The first display that comes back has the focus.
    change({beside});
    EXPECT_THAT(overlays(), IsEmpty());
    change({beside, builtIn});
    EXPECT_THAT(frames(), ElementsAre(builtIn.frame));
}

TEST_F(BlackoutOverlay, IsBuiltAnewAtEveryNoticeOfABurst) {
    setUpScreens({builtIn, beside});
    activate();
    forgetEvents();
    for (int round = 0; round < 5; ++round) {
        mac().screens().change({{builtIn, above}, 0, true});
        mac().screens().change({{builtIn, beside, above}, 0, true});
    }
    mac().runFor(0.01);
    EXPECT_THAT(frames(), ElementsAre(beside.frame, above.frame));
    mac().runFor(3);
    deactivate();
    EXPECT_THAT(overlays(), IsEmpty());
}

TEST_F(BlackoutOverlay, DoesNotAskForSharedSpacesAgain) {
    setUpScreens({builtIn});
    activate();
    mac().screens().change({{builtIn, beside}, 0, false});
    mac().runFor(0.01);
    EXPECT_THAT(overlays(), SizeIs(1));
}

}  // namespace
}  // namespace vantrel
