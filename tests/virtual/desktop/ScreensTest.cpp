#include <memory>

#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Frames = std::vector<Rect>;

class ScreensTest : public MacTest {
  protected:
    void SetUp() override {
        mac().screens().setUp({{{"A", {{0, 0}, {1440, 900}}}, {"B", {{1440, 100}, {1920, 1080}}}}, 0, true});
        mac().onMain([this] {
            observation = computer().screens.observeScreenParametersDidChange([this] {
                EXPECT_TRUE(computer().threads.isMainThread());
                computer().log.print("told");
            });
        });
    }
    void TearDown() override {
        mac().onMain([this] { observation.reset(); });
        MacTest::TearDown();
    }

    Frames frames() {
        Frames found;
        for (const Screen& screen : mac().screens().displays().screens) found.push_back(screen.frame);
        return found;
    }
    std::size_t told() {
        mac().runFor(0);
        return logLines().size();
    }

    std::unique_ptr<Observation> observation;
};

TEST_F(ScreensTest, DisplaysAreMovedAndResized) {
    EXPECT_TRUE(mac().screens().setFrame("B", {{-800, 900}, {800, 600}}));
    EXPECT_EQ((Frames{{{0, 0}, {1440, 900}}, {{-800, 900}, {800, 600}}}), frames());
    EXPECT_FALSE(mac().screens().setFrame("C", {}));
    EXPECT_EQ(1U, told());
}

TEST_F(ScreensTest, ThePrimaryDisplayStaysAtTheOrigin) {
    EXPECT_TRUE(mac().screens().setFrame("A", {{100, 50}, {1440, 900}}));
    EXPECT_EQ((Frames{{{0, 0}, {1440, 900}}, {{1340, 50}, {1920, 1080}}}), frames());
    EXPECT_TRUE(mac().screens().unplug("A"));
    EXPECT_EQ((Frames{{{0, 0}, {1920, 1080}}}), frames());
    EXPECT_EQ(2U, told());
}

TEST_F(ScreensTest, AMirroredDisplayIsNotListedUntilItStopsMirroring) {
    EXPECT_TRUE(mac().screens().focus("B"));
    EXPECT_TRUE(mac().screens().mirror("B"));
    EXPECT_FALSE(mac().screens().mirror("B"));
    EXPECT_EQ((Frames{{{0, 0}, {1440, 900}}}), frames());
    mac().onMain([this] { EXPECT_EQ("A", computer().screens.mainScreen()->localizedName); });
    EXPECT_TRUE(mac().screens().unmirror("B"));
    EXPECT_FALSE(mac().screens().unmirror("B"));
    EXPECT_EQ((Frames{{{0, 0}, {1440, 900}}, {{1440, 100}, {1920, 1080}}}), frames());
    mac().screens().mirror("B");
    EXPECT_TRUE(mac().screens().unplug("B"));
    EXPECT_FALSE(mac().screens().unmirror("B"));
    EXPECT_EQ(3U, told());
}

TEST_F(ScreensTest, APrimaryDisplayThatStopsMirroringIsThePrimaryOneAgain) {
    mac().screens().focus("B");
    mac().screens().mirror("A");
    EXPECT_EQ((Frames{{{0, 0}, {1920, 1080}}}), frames());
    mac().screens().unmirror("A");
    EXPECT_EQ((Frames{{{0, 0}, {1440, 900}}, {{1440, 100}, {1920, 1080}}}), frames());
    EXPECT_EQ("A", mac().screens().displays().screens.front().localizedName);
    mac().onMain([this] { EXPECT_EQ("B", computer().screens.mainScreen()->localizedName); });
}

TEST_F(ScreensTest, ADisplayThatMirrorsTakesThePlaceOfTheLastOneThatGoes) {
    mac().screens().mirror("B");
    EXPECT_TRUE(mac().screens().unplug("A"));
    EXPECT_EQ((Frames{{{0, 0}, {1920, 1080}}}), frames());
    EXPECT_FALSE(mac().screens().unmirror("B"));
    mac().onMain([this] { EXPECT_EQ("B", computer().screens.mainScreen()->localizedName); });
}

TEST_F(ScreensTest, TheFirstDisplayThatIsPluggedInIsThePrimaryOne) {
    mac().screens().change({{}, 0, true});
    mac().screens().plug({"C", {{2560, 900}, {800, 600}}});
    EXPECT_EQ((Frames{{{0, 0}, {800, 600}}}), frames());
    mac().screens().plug({"D", {{800, 0}, {640, 480}}});
    EXPECT_EQ((Frames{{{0, 0}, {800, 600}}, {{800, 0}, {640, 480}}}), frames());
}

TEST_F(ScreensTest, NoTwoDisplaysAreAtOnePlace) {
    mac().screens().plug({"C", {{1440, 100}, {800, 600}}});
    EXPECT_EQ((Frames{{{0, 0}, {1440, 900}}, {{1440, 100}, {1920, 1080}}, {{3360, 0}, {800, 600}}}), frames());
    EXPECT_TRUE(mac().screens().setFrame("B", {{0, 0}, {1920, 1080}}));
    EXPECT_EQ((Frames{{{0, 0}, {1440, 900}}, {{4160, 0}, {1920, 1080}}, {{3360, 0}, {800, 600}}}), frames());
    EXPECT_TRUE(mac().screens().mirror("C"));
    EXPECT_TRUE(mac().screens().setFrame("B", {{3360, 0}, {1920, 1080}}));
    EXPECT_TRUE(mac().screens().unmirror("C"));
    EXPECT_EQ((Frames{{{0, 0}, {1440, 900}}, {{3360, 0}, {1920, 1080}}, {{5280, 0}, {800, 600}}}), frames());
}

TEST_F(ScreensTest, TheMainScreenIsTheOneWithTheFocus) {
    EXPECT_TRUE(mac().screens().focus("B"));
    EXPECT_FALSE(mac().screens().focus("C"));
    mac().onMain([this] { EXPECT_EQ("B", computer().screens.mainScreen()->localizedName); });
    EXPECT_EQ(0U, told());
}

TEST_F(ScreensTest, NoticesComeInBurstsWhenAskedFor) {
    mac().screens().setNotices(3, 0.2);
    mac().screens().unplug("B");
    EXPECT_EQ(1U, told());
    mac().runFor(0.3);
    EXPECT_EQ(2U, told());
    mac().runFor(1);
    EXPECT_EQ(3U, told());
    mac().onMain([this] { observation.reset(); });
    mac().screens().plug({"C", {{1440, 0}, {800, 600}}});
    mac().runFor(1);
    EXPECT_EQ(3U, told());
}

}  // namespace
}  // namespace vantrel::virtualmac
