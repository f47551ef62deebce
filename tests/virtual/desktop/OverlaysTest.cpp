#include <memory>

#include "tests/virtual/desktop/DesktopTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

class OverlaysTest : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        mac().screens().setUp({{{"A", {{0, 0}, {1440, 900}}}, {"B", {{1440, -180}, {1920, 1080}}}}, 0, true});
        OverlayDescription description;
        description.frame = {{1440, -180}, {1920, 1080}};
        description.level = 1000;
        description.labels.resize(1);
        description.labels.front().text = "Vantrel";
        mac().onMain([&] { overlay = computer().overlays.makeOverlay(description); });
    }
    void TearDown() override {
        mac().onMain([this] { overlay.reset(); });
        DesktopTest::TearDown();
    }

    std::vector<WindowEntry> list() { return computer().windowList.copy(WindowListOption::all).value(); }

    std::unique_ptr<Overlay> overlay;
};

TEST_F(OverlaysTest, AnOverlayIsAWindowOfTheClientInFrontOfTheOthers) {
    mac().onMain([this] { overlay->orderFrontRegardless(); });
    ASSERT_EQ(2U, list().size());
    const WindowEntry entry = list().front();
    EXPECT_EQ(mac().applications().ownProcess(), entry.ownerPID);
    EXPECT_EQ("Vantrel", entry.ownerName);
    EXPECT_EQ(1000, entry.layer);
    EXPECT_EQ((Rect{{1440, 0}, {1920, 1080}}), entry.bounds) << "from the top left of the primary display";
    EXPECT_EQ(true, entry.isOnscreen);
    mac().applications().openWindow(process, {"Altra"});
    EXPECT_EQ(1000, list().front().layer);
    mac().onMain([this] { overlay->orderOut(); });
    EXPECT_EQ(std::nullopt, list().front().isOnscreen);
    mac().onMain([this] { overlay->close(); });
    EXPECT_EQ(0, list().front().layer);
}

TEST_F(OverlaysTest, AWindowOfTheSameLayerLiesAboveUntilTheOverlayIsRaised) {
    mac().onMain([this] { overlay->orderFrontRegardless(); });
    NewWindow above{"Sopra"};
    above.layer = 1000;
    mac().applications().openWindow(process, above);
    EXPECT_EQ("Sopra", list().front().name);
    mac().onMain([this] {
        overlay->setLevel(1000);
        overlay->orderFrontRegardless();
        overlay->orderFrontRegardless();
    });
    EXPECT_EQ("", list().front().name);
    EXPECT_EQ(1U, events(OverlayEvent::raised).size());
    above.layer = 1001;
    mac().applications().openWindow(process, above);
    mac().onMain([this] { overlay->orderFrontRegardless(); });
    EXPECT_EQ("Sopra", list().front().name) << "no order reaches a higher layer";
    EXPECT_EQ(1U, events(OverlayEvent::raised).size());
}

TEST_F(OverlaysTest, TellsWhatIsSeenAndNothingTwice) {
    forgetEvents();
    EXPECT_EQ(1U, mac().leftovers().overlays);
    mac().onMain([this] {
        overlay->setLevel(1000);
        overlay->orderFrontRegardless();
        overlay->setLevel(900);
        overlay->orderFrontRegardless();
        overlay->orderOut();
        overlay->orderOut();
        overlay->close();
        overlay->close();
        overlay->orderFrontRegardless();
        overlay->setLevel(1);
    });
    EXPECT_EQ((Happenings{
                  {OverlayEvent::shown, "1440 -180 1920 1080", {{Field::level, "1000"}, {Field::label, "Vantrel"}}},
                  {OverlayEvent::level, "1440 -180 1920 1080", {{Field::level, "900"}}},
                  {OverlayEvent::hidden, "1440 -180 1920 1080"},
                  {OverlayEvent::closed, "1440 -180 1920 1080"},
              }),
              transcript());
    EXPECT_EQ(0U, mac().leftovers().overlays);
}

TEST_F(OverlaysTest, ThatSomebodyClosesIsBackWhenItIsOrderedToTheFront) {
    const Rect frame{{1440, -180}, {1920, 1080}};
    EXPECT_FALSE(mac().overlays().closeShown(frame));
    mac().onMain([this] { overlay->orderFrontRegardless(); });
    forgetEvents();
    EXPECT_FALSE(mac().overlays().closeShown({{0, 0}, {1440, 900}}));
    EXPECT_TRUE(mac().overlays().closeShown(frame));
    EXPECT_FALSE(mac().overlays().closeShown(frame));
    EXPECT_EQ(std::nullopt, list().front().isOnscreen);
    mac().onMain([this] { overlay->orderFrontRegardless(); });
    EXPECT_EQ(true, list().front().isOnscreen);
    EXPECT_EQ((Happenings{
                  {OverlayEvent::hidden, "1440 -180 1920 1080"},
                  {OverlayEvent::shown, "1440 -180 1920 1080", {{Field::level, "1000"}, {Field::label, "Vantrel"}}},
              }),
              transcript());
}

TEST_F(OverlaysTest, NeverHasTheKeyboardOrTheFront) {
    mac().onMain([this] { overlay->orderFrontRegardless(); });
    EXPECT_EQ(process, mac().desktop().front().front().process);
    EXPECT_FALSE(mac().windows().front());
}

}  // namespace
}  // namespace vantrel::virtualmac
