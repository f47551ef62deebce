#include <string>

#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

class MacFixtureTest : public MacTest {
  protected:
    struct MainOnly {
        explicit MainOnly(Computer& computer) : computer(computer) { EXPECT_TRUE(computer.threads.isMainThread()); }
        ~MainOnly() { EXPECT_TRUE(computer.threads.isMainThread()); }
        Computer& computer;
    };
};

TEST_F(MacFixtureTest, MakesObjectsOnTheMainThreadAndDropsThemThere) {
    const auto object = makeOnMain<MainOnly>(computer());
    EXPECT_FALSE(object.expired());
    dropOnMain();
    EXPECT_TRUE(object.expired());
    makeOnMain<MainOnly>(computer());
}

TEST_F(MacFixtureTest, LeavesNothingBehind) {
    computer().dispatch.mainQueue().asyncAfter(5, [] {});
    computer().dispatch.userInitiatedQueue().asyncAfter(5, [] {});
    Leftovers expected;
    expected.pendingBlocks = 1;
    expected.workers = 1;
    EXPECT_EQ(expected, mac().leftovers());
    mac().drain();
    EXPECT_EQ(Leftovers(), mac().leftovers());
}

TEST_F(MacFixtureTest, EndsWithThreadsThatWaitForGood) {
    const auto semaphore = computer().dispatch.makeSemaphore(0);
    mac().inBackground([semaphore] { semaphore->wait(std::numeric_limits<double>::infinity()); });
    mac().runFor(1);
    end();
}

TEST_F(MacFixtureTest, EndsWithMainSleeping) {
    mac().postToMain([this] { computer().threads.sleep(100); });
    mac().runFor(1);
    end();
}

TEST_F(MacFixtureTest, SaysWhenSomethingGoesOnAndOn) {
    expectMisuse();
    std::atomic<bool> stop = false;
    mac().inBackground([&] {
        while (!stop) computer().threads.sleep(600);
    });
    EXPECT_FALSE(mac().runUntilIdle());
    stop = true;
    mac().drain();
    EXPECT_EQ(std::vector<std::string>{"something goes on and on"}, expectedMisuse());
}

TEST(VirtualMacDeathTest, AbortsOnMisuseThatNobodyHearsOf) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            VirtualMac mac;
            mac.computer().application.activate();
        },
        "misuse: Application.activate off the main thread");
}

}  // namespace
}  // namespace vantrel::virtualmac
