#include <gmock/gmock.h>

#include "lockdown/KeyboardHookService.h"
#include "session/MainThreadOwned.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class KeyboardHook : public virtualmac::MacTest {
  protected:
    void SetUp() override {
        mac().onMain([this] {
            auto& mac = computer();
            hook_ = makeMainThreadOwned<KeyboardHookService>(mac.dispatch, mac.threads, mac.accessibilityTrust,
                                                             mac.keyboardTaps, mac.log);
            hook_->onKeyBlocked = [this](const std::string& name) { blocked_.push_back(name); };
        });
    }
    void TearDown() override {
        mac().onMain([this] { hook_.reset(); });
        MacTest::TearDown();
    }

    void start() {
        mac().onMain([this] { hook_->start(); });
    }
    void stop() {
        mac().onMain([this] { hook_->stop(); });
    }
    KeyboardHookService& hook() { return *hook_; }
    void release() {
        mac().onMain([this] { hook_.reset(); });
    }
    const std::vector<std::string>& blocked() const { return blocked_; }

  private:
    std::shared_ptr<KeyboardHookService> hook_;
    std::vector<std::string> blocked_;
};

TEST_F(KeyboardHook, StartsOnce) {
    start();
    start();
    EXPECT_TRUE(hook().isActive());
    EXPECT_THAT(logLines(), ElementsAre("[HOOK] Hook tastiera attivato"));
    EXPECT_EQ(mac().residue().keyboardTaps, 1u);
}

TEST_F(KeyboardHook, StopsOnceAndLeavesNoTap) {
    start();
    stop();
    stop();
    EXPECT_FALSE(hook().isActive());
    EXPECT_THAT(logLines(), ElementsAre("[HOOK] Hook tastiera attivato", "[HOOK] Hook tastiera disattivato"));
    EXPECT_EQ(mac().residue().keyboardTaps, 0u);
}

TEST_F(KeyboardHook, ThatWasNeverStartedStopsSilently) {
    stop();
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(KeyboardHook, ReleasedWhileActiveLeavesNoTap) {
    start();
    release();
    EXPECT_EQ(mac().residue().keyboardTaps, 0u);
}

TEST_F(KeyboardHook, WithoutThePermissionAsksForItAndStaysInactive) {
    mac().trust().setTrusted(false);
    start();
    EXPECT_FALSE(hook().isActive());
    EXPECT_THAT(logLines(), ElementsAre("[HOOK] ⚠ Permessi Accessibilità non concessi — l'hook non funzionerà"));
    EXPECT_EQ(mac().trust().prompts(), 1);
    EXPECT_EQ(mac().residue().keyboardTaps, 0u);
}

TEST_F(KeyboardHook, CanBeStartedAgainOnceThePermissionIsGiven) {
    mac().trust().setTrusted(false);
    start();
    mac().trust().setTrusted(true);
    start();
    EXPECT_TRUE(hook().isActive());
    stop();
    start();
    EXPECT_TRUE(hook().isActive());
    EXPECT_EQ(mac().residue().keyboardTaps, 1u);
}

}  // namespace
}  // namespace vantrel
