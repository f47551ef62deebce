#include <memory>

#include "tests/contracts/ContractTest.h"
#include "tests/contracts/SpacesHost.h"

namespace vantrel::contracts {
namespace {

class SpacesContract : public ContractTest {
  protected:
    void SetUp() override {
        spaces().showSpace(0);
        settle();
    }

    void TearDown() override {
        host().onMain([this] { observations.clear(); });
        spaces().showSpace(0);
        ContractTest::TearDown();
    }

    SpacesHost& spaces() { return dynamic_cast<SpacesHost&>(host()); }

    void observe(const std::string& name, Block further = {}) {
        host().onMain([&] {
            observations.push_back(
                computer().spaces.observeActiveSpaceDidChange([this, name, further = std::move(further)] {
                    note(name + (computer().threads.isMainThread() ? "" : " off the main thread"));
                    if (further) further();
                }));
        });
    }

    // By then every observer has been told.
    void settle() { host().letTimePass(0.3); }

    std::vector<std::unique_ptr<Observation>> observations;
};

TEST_F(SpacesContract, AnObserverIsToldOnTheMainThreadOnceOfEachChange) {
    observe("told");
    settle();
    EXPECT_EQ(Notes{}, notes());
    spaces().showSpace(1);
    ASSERT_TRUE(noted(1));
    settle();
    spaces().showSpace(0);
    ASSERT_TRUE(noted(2));
    settle();
    EXPECT_EQ((Notes{"told", "told"}), notes());
}

TEST_F(SpacesContract, ASpaceThatIsShownAlreadyIsNoChange) {
    observe("told");
    spaces().showSpace(0);
    settle();
    EXPECT_EQ(Notes{}, notes());
    spaces().showSpace(1);
    ASSERT_TRUE(noted(1));
    spaces().showSpace(1);
    settle();
    EXPECT_EQ(Notes{"told"}, notes());
}

TEST_F(SpacesContract, GoingAndComingBackAreToldAlsoWhenTheMainThreadWasBusy) {
    observe("told");
    host().postToMain([this] {
        computer().threads.sleep(1);
        note("awake");
    });
    host().letTimePass(0.2);
    spaces().showSpace(1);
    spaces().showSpace(0);
    ASSERT_TRUE(noted(3));
    settle();
    EXPECT_EQ((Notes{"awake", "told", "told"}), notes());
}

TEST_F(SpacesContract, EveryObserverIsToldInTurn) {
    observe("first");
    observe("second");
    spaces().showSpace(1);
    ASSERT_TRUE(noted(2));
    settle();
    EXPECT_EQ((Notes{"first", "second"}), notes());
}

TEST_F(SpacesContract, NobodyIsToldAfterTheObservationsEnd) {
    observe("ended");
    observe("goes on");
    host().onMain([this] { observations.front().reset(); });
    spaces().showSpace(1);
    ASSERT_TRUE(noted(1));
    settle();
    EXPECT_EQ(Notes{"goes on"}, notes());
}

TEST_F(SpacesContract, AnObserverMayEndAnotherWhoseNoticeIsOnItsWay) {
    observe("first", [this] { observations.back().reset(); });
    observe("second");
    spaces().showSpace(1);
    ASSERT_TRUE(noted(1));
    settle();
    EXPECT_EQ(Notes{"first"}, notes());
}

TEST_F(SpacesContract, AnObserverMayEndItself) {
    observe("told", [this] { observations.clear(); });
    spaces().showSpace(1);
    ASSERT_TRUE(noted(1));
    spaces().showSpace(0);
    settle();
    EXPECT_EQ(Notes{"told"}, notes());
}

}  // namespace
}  // namespace vantrel::contracts
