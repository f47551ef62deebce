#include <thread>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Desktops.h"
#include "platform/threads/DispatchQueue.h"
#include "tests/linux/support/DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

class SpacesTest : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        server = X11Connection::open();
        ASSERT_TRUE(server);
        switchTo(0);
    }

    void TearDown() override {
        if (server) switchTo(0);
        DesktopTest::TearDown();
    }

    void switchTo(std::uint32_t desktop) {
        X11Desktops desktops(*server);
        desktops.switchTo(desktop);
        EXPECT_TRUE(waitUntil([&] { return desktops.current() == desktop; }));
        turnFor(0.05);
    }

    std::unique_ptr<X11Connection> server;
};

TEST_F(SpacesTest, TellsOnceOfEachChange) {
    int told = 0;
    const auto observation = computer->spaces.observeActiveSpaceDidChange([&told] { ++told; });
    turnFor(0.1);
    EXPECT_EQ(told, 0);
    switchTo(1);
    EXPECT_TRUE(waitUntil([&told] { return told == 1; }));
    switchTo(0);
    EXPECT_TRUE(waitUntil([&told] { return told == 2; }));
    switchTo(0);
    EXPECT_EQ(told, 2);
}

TEST_F(SpacesTest, TellsOfGoingAndComingBackAlsoWhenTheMainThreadWasBusy) {
    int told = 0;
    const auto observation = computer->spaces.observeActiveSpaceDidChange([&told] { ++told; });
    X11Desktops desktops(*server);
    // The event loop does not turn in between.
    for (const std::uint32_t desktop : {1U, 0U}) {
        desktops.switchTo(desktop);
        while (desktops.current() != desktop) std::this_thread::yield();
    }
    EXPECT_TRUE(waitUntil([&told] { return told == 2; }));
    turnFor(0.1);
    EXPECT_EQ(told, 2);
}

TEST_F(SpacesTest, TellsNobodyWhoHasStoppedObservingEvenWhenTheNoticeIsQueued) {
    int told = 0;
    int toldOther = 0;
    std::unique_ptr<Observation> observation;
    // The other observer is called first and removes it.
    const auto other = computer->spaces.observeActiveSpaceDidChange([&] {
        ++toldOther;
        observation.reset();
    });
    observation = computer->spaces.observeActiveSpaceDidChange([&told] { ++told; });
    switchTo(1);
    ASSERT_TRUE(waitUntil([&toldOther] { return toldOther == 1; }));
    turnFor(0.1);
    EXPECT_EQ(told, 0);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
