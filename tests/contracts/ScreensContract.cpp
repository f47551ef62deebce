#include <memory>

#include "tests/contracts/ContractTest.h"
#include "tests/contracts/DisplayHost.h"

namespace vantrel::contracts {
namespace {

class ScreensContract : public ContractTest {
  protected:
    void TearDown() override {
        host().onMain([this] { observations.clear(); });
        ContractTest::TearDown();
    }

    DisplayHost& displays() { return dynamic_cast<DisplayHost&>(host()); }

    std::vector<Screen> screens() {
        std::vector<Screen> found;
        host().onMain([&] { found = computer().screens.screens(); });
        return found;
    }

    std::optional<Screen> mainScreen() {
        std::optional<Screen> found;
        host().onMain([&] { found = computer().screens.mainScreen(); });
        return found;
    }

    void observe(const std::string& name) {
        host().onMain([&] {
            observations.push_back(computer().screens.observeScreenParametersDidChange(
                [this, name] { note(computer().threads.isMainThread() ? name : name + " off the main thread"); }));
        });
    }

    /// A notification of an earlier change may still be on its way.
    void settle() { host().letTimePass(1); }

    static const Screen left;
    static const Screen right;

    std::vector<std::unique_ptr<Observation>> observations;
};

const Screen ScreensContract::left{"Sinistro", {{0, 0}, {640, 600}}};
const Screen ScreensContract::right{"Destro", {{640, 0}, {500, 480}}};

TEST_F(ScreensContract, ThereIsADisplayAndItIsTheMainScreen) {
    const auto found = screens();
    ASSERT_FALSE(found.empty());
    EXPECT_EQ((Point{0, 0}), found.front().frame.origin);
    EXPECT_EQ(found.front(), mainScreen());
}

TEST_F(ScreensContract, DisplaysAreListedThePrimaryOneFirst) {
    displays().setDisplays({left, right});
    EXPECT_EQ((std::vector{left, right}), screens());
    EXPECT_EQ(left, mainScreen());
    displays().setDisplays({{"Destro", {{0, 0}, {500, 480}}}, {"Sinistro", {{-640, 0}, {640, 600}}}});
    EXPECT_EQ((std::vector<Screen>{{"Destro", {{0, 0}, {500, 480}}}, {"Sinistro", {{-640, 0}, {640, 600}}}}),
              screens());
}

TEST_F(ScreensContract, ANameThatIsNoUTF8IsMadeSo) {
    displays().setDisplays({{"Sin\xffistro", left.frame}, right});
    const Screen repaired{"Sin\uFFFDistro", left.frame};
    EXPECT_EQ((std::vector{repaired, right}), screens());
    EXPECT_EQ(repaired, mainScreen());
}

TEST_F(ScreensContract, DisplaysMayLieAboveAndBelow) {
    const Screen below{"Sotto", {{0, 0}, {600, 300}}};
    const Screen above{"Sopra", {{-200, 300}, {800, 400}}};
    displays().setDisplays({below, above});
    EXPECT_EQ((std::vector{below, above}), screens());
    const Screen primary{"Sopra", {{0, 0}, {800, 400}}};
    const Screen other{"Sotto", {{200, -300}, {600, 300}}};
    displays().setDisplays({primary, other});
    EXPECT_EQ((std::vector{primary, other}), screens());
}

TEST_F(ScreensContract, AnObserverIsToldOnTheMainThreadOfEachChange) {
    displays().setDisplays({left});
    settle();
    observe("told");
    displays().setDisplays({left, right});
    ASSERT_TRUE(noted(1));
    settle();
    displays().setDisplays({left});
    ASSERT_TRUE(noted(2));
    settle();
    EXPECT_EQ((Notes{"told", "told"}), notes());
}

TEST_F(ScreensContract, WhoIsToldFindsTheNewDisplays) {
    displays().setDisplays({left});
    settle();
    host().onMain([this] {
        observations.push_back(computer().screens.observeScreenParametersDidChange(
            [this] { note(std::to_string(computer().screens.screens().size())); }));
    });
    displays().setDisplays({left, right});
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(Notes{"2"}, notes());
}

TEST_F(ScreensContract, AMovedDisplayIsAChange) {
    displays().setDisplays({left, right});
    settle();
    observe("told");
    displays().setDisplays({left, {"Destro", {{640, 100}, {500, 480}}}});
    EXPECT_TRUE(noted(1));
}

TEST_F(ScreensContract, EveryObserverIsToldAndARemovedOneIsNot) {
    displays().setDisplays({left});
    settle();
    observe("removed");
    observe("first");
    observe("second");
    host().onMain([this] { observations.front().reset(); });
    displays().setDisplays({left, right});
    ASSERT_TRUE(noted(2));
    settle();
    EXPECT_EQ((Notes{"first", "second"}), notes());
}

TEST_F(ScreensContract, AnObserverMayRemoveItselfAndOthersWhenTold) {
    displays().setDisplays({left});
    settle();
    host().onMain([this] {
        observations.push_back(computer().screens.observeScreenParametersDidChange([this] {
            note("told");
            observations.clear();
        }));
    });
    observe("other");
    displays().setDisplays({left, right});
    ASSERT_TRUE(noted(1));
    settle();
    EXPECT_EQ(Notes{"told"}, notes());
}

}  // namespace
}  // namespace vantrel::contracts
