#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "platform/macos/threads/MacRunLoop.h"
#include "platform/macos/threads/MainThreadWatch.h"
#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/clibrary/WatchLine.h"

namespace vantrel::standins {
namespace {

/// What the client says to the process that watches its main thread.
class MainThreadWatchTest : public testing::Test {
  protected:
    void SetUp() override {
        mac_.onMain(withPool([] {
            watchLine() = {true, {}};
            EXPECT_TRUE(macos::MainThreadWatch::start());
        }));
    }

    void TearDown() override {
        mac_.onMain(withPool([this] {
            timer_.reset();
            watchLine() = {};
            macos::MainThreadWatch::start();
        }));
    }

    void startTimer(bool repeats) {
        mac_.onMain(withPool([this, repeats] { timer_ = std::make_unique<macos::MacTimer>(3, repeats, [] {}); }));
    }

    std::string heard() {
        std::string heard;
        mac_.onMain([&] { heard = std::exchange(watchLine().heard, {}); });
        return heard;
    }

    virtualmac::VirtualMac mac_;
    MacInUse inUse_{mac_};
    std::unique_ptr<macos::MacTimer> timer_;
};

TEST_F(MainThreadWatchTest, TheMainThreadAnswersEveryFiveSecondsAsLongAsARepeatingTimerLives) {
    mac_.runFor(60);
    EXPECT_EQ("", heard());
    startTimer(true);
    EXPECT_EQ("+", heard());
    mac_.runFor(15);
    EXPECT_EQ("+++", heard());
    mac_.onMain(withPool([this] { timer_.reset(); }));
    EXPECT_EQ("-", heard());
    mac_.runFor(60);
    EXPECT_EQ("", heard());
}

TEST_F(MainThreadWatchTest, ASingleTimerIsNoReasonToWatch) {
    startTimer(false);
    mac_.runFor(60);
    EXPECT_EQ("", heard());
}

TEST_F(MainThreadWatchTest, TheMainThreadAnswersUnderAnAlertThatABlockOfItsQueueHasOpened) {
    startTimer(true);
    mac_.computer().dispatch.mainQueue().async([this] {
        mac_.parts().alerts.runModal({AlertStyle::warning, "Uno", "", {"A"}});
    });
    mac_.runFor(12);
    mac_.participant().answerAlert("A");
    mac_.runFor(0);
    EXPECT_EQ("+++", heard());
}

TEST_F(MainThreadWatchTest, AMainThreadThatHangsDoesNotAnswer) {
    startTimer(true);
    EXPECT_EQ("+", heard());
    std::string during = "not read";
    mac_.onMain([&] {
        mac_.parts().threads.sleep(100);
        during = watchLine().heard;
    });
    EXPECT_EQ("", during);
    mac_.runFor(5);
    EXPECT_EQ("++", heard());
}

TEST_F(MainThreadWatchTest, TheReturnFromALongCallIsAnAnswerOncePerSecond) {
    startTimer(true);
    EXPECT_EQ("+", heard());
    mac_.onMain(withPool([this] {
        for (int call = 0; call < 10; ++call) {
            mac_.parts().threads.sleep(0.5);
            macos::MainThreadWatch::noteReturn();
        }
        EXPECT_EQ("+++++", watchLine().heard);
    }));
}

TEST_F(MainThreadWatchTest, AnActivityOfAnotherThreadIsAReasonToWatchToo) {
    std::unique_ptr<macos::TimelyActivity> activity;
    mac_.inBackground(withPool([&activity] { activity = std::make_unique<macos::TimelyActivity>(); }));
    mac_.runFor(6);
    EXPECT_EQ("++", heard());
    mac_.inBackground(withPool([&activity] { activity.reset(); }));
    mac_.runFor(60);
    EXPECT_EQ("--", heard());
}

TEST_F(MainThreadWatchTest, AClientWithoutAWatcherDoesWithout) {
    mac_.onMain(withPool([] {
        watchLine() = {};
        EXPECT_FALSE(macos::MainThreadWatch::start());
    }));
    startTimer(true);
    mac_.runFor(60);
    EXPECT_EQ("", heard());
    mac_.onMain(withPool([this] { timer_.reset(); }));
}

}  // namespace
}  // namespace vantrel::standins
