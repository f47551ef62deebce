#include <atomic>

#include "tests/contracts/ContractTest.h"

namespace vantrel::contracts {
namespace {

class AlertContract : public ContractTest {
  protected:
    /// Main thread.
    std::size_t ask() {
        return computer().alerts.runModal({AlertStyle::warning, "Domanda", "Perché?", {"Continua", "Annulla"}});
    }
};

TEST_F(AlertContract, ReturnsTheIndexOfTheButton) {
    for (const auto& [title, index] : {std::pair("Annulla", "1"), std::pair("Continua", "0")}) {
        host().postToMain([this] { note(std::to_string(ask())); });
        const std::size_t before = notes().size();
        host().pressAlertButton(title);
        ASSERT_TRUE(noted(before + 1));
        EXPECT_EQ(index, notes().back());
    }
}

TEST_F(AlertContract, TheMainQueueWaitsUnderAnAlertThatOneOfItsBlocksOpened) {
    computer().dispatch.mainQueue().async([this] {
        computer().dispatch.mainQueue().async([this] { note("next block"); });
        ask();
        note("dismissed");
    });
    host().letTimePass(0.3);
    EXPECT_EQ(Notes{}, notes());
    host().pressAlertButton("Continua");
    ASSERT_TRUE(noted(2));
    EXPECT_EQ((Notes{"dismissed", "next block"}), notes());
}

TEST_F(AlertContract, TheMainQueueGoesOnUnderAnAlertThatAnEventOpened) {
    host().postToMain([this] {
        computer().dispatch.mainQueue().async([this] { note("block"); });
        ask();
        note("dismissed");
    });
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(Notes{"block"}, notes());
    host().pressAlertButton("Continua");
    ASSERT_TRUE(noted(2));
    EXPECT_EQ((Notes{"block", "dismissed"}), notes());
}

TEST_F(AlertContract, TimersStandStillUnderAnAlertAndAreLateAfterIt) {
    std::unique_ptr<Timer> timer;
    host().postToMain([this, &timer] {
        timer = computer().mainRunLoop.scheduledTimer(0.05, false, [this] { note("tick"); });
        ask();
        note("dismissed");
    });
    host().letTimePass(0.3);
    EXPECT_EQ(Notes{}, notes());
    host().pressAlertButton("Continua");
    ASSERT_TRUE(noted(2));
    EXPECT_EQ((Notes{"dismissed", "tick"}), notes());
    host().onMain([&timer] { timer.reset(); });
}

}  // namespace
}  // namespace vantrel::contracts
