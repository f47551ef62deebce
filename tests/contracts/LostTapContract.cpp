#include <memory>
#include <regex>
#include <string>

#include "tests/contracts/ContractTest.h"
#include "tests/contracts/KeyboardHost.h"

namespace vantrel::contracts {
namespace {

constexpr std::int64_t letterA = 0;

std::string_view nothing(const KeyEvent&) noexcept {
    return {};
}

class LostTapContract : public ContractTest {
  protected:
    void TearDown() override {
        host().onMain([this] { tap.reset(); });
        ContractTest::TearDown();
    }

    void start() {
        host().onMain([this] { tap = computer().keyboardTaps.create(&nothing, nullptr); });
        ASSERT_TRUE(tap);
        // The first key of a test may be slow, because a window is opened for it.
        pressA();
        ASSERT_TRUE(received(1));
    }

    KeyboardHost& keyboard() { return dynamic_cast<KeyboardHost&>(host()); }
    void pressA() { keyboard().pressKey(letterA, 0); }

    bool received(std::size_t keys) {
        return eventually([&] { return keyboard().keysReceived().size() >= keys; });
    }

    std::unique_ptr<KeyboardTap> tap;
};

TEST_F(LostTapContract, ALostTapIsSaidOnceOnStandardErrorWithTheMomentAndTheReason) {
    start();
    testing::internal::CaptureStderr();
    host().postToMain([this] {
        computer().threads.sleep(3);
        note("awake");
    });
    host().letTimePass(0.2);
    pressA();
    EXPECT_TRUE(noted(1));
    pressA();
    EXPECT_TRUE(received(3));
    host().onMain([this] { tap.reset(); });
    const std::string said = testing::internal::GetCapturedStderr();
    const std::regex line(
        "vantrel: [0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z the keyboard tap is lost, every key passes "
        "now: the main thread did not answer in time\n");
    EXPECT_TRUE(std::regex_match(said, line)) << said;
}

TEST_F(LostTapContract, ATapThatIsEndedIsNotLost) {
    start();
    testing::internal::CaptureStderr();
    pressA();
    EXPECT_TRUE(received(2));
    host().onMain([this] { tap.reset(); });
    pressA();
    EXPECT_TRUE(received(3));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace vantrel::contracts
