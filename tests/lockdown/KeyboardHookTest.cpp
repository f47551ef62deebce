#include <gmock/gmock.h>

#include "lockdown/KeyboardHookService.h"
#include "session/MainThreadOwned.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

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
    /// Presses a combination such as "cmd+q". The decision has been made when it returns.
    void press(std::string_view key) {
        participant().pressKey(*virtualmac::KeyStroke::parse(key));
        mac().runFor(0.1);
    }
    /// Another application is in front and gets the keys that are not swallowed.
    void bringNotesForward() {
        virtualmac::ApplicationDescription description;
        description.name = "Note";
        mac().processes().find(mac().processes().add(std::move(description)))->comeToFront();
    }
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
    EXPECT_EQ(mac().leftovers().keyboardTaps, 1u);
}

TEST_F(KeyboardHook, StopsOnceAndLeavesNoTap) {
    start();
    stop();
    stop();
    EXPECT_FALSE(hook().isActive());
    EXPECT_THAT(logLines(), ElementsAre("[HOOK] Hook tastiera attivato", "[HOOK] Hook tastiera disattivato"));
    EXPECT_EQ(mac().leftovers().keyboardTaps, 0u);
}

TEST_F(KeyboardHook, ThatWasNeverStartedStopsSilently) {
    stop();
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(KeyboardHook, ReleasedWhileActiveLeavesNoTap) {
    start();
    release();
    EXPECT_EQ(mac().leftovers().keyboardTaps, 0u);
}

TEST_F(KeyboardHook, WithoutThePermissionAsksForItAndStaysInactive) {
    mac().trust().setTrusted(false);
    start();
    EXPECT_FALSE(hook().isActive());
    EXPECT_THAT(logLines(), ElementsAre("[HOOK] ⚠ Permessi Accessibilità non concessi — l'hook non funzionerà"));
    EXPECT_EQ(mac().trust().prompts(), 1);
    EXPECT_EQ(mac().leftovers().keyboardTaps, 0u);
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
    EXPECT_EQ(mac().leftovers().keyboardTaps, 1u);
}

TEST_F(KeyboardHook, SwallowsCommandShift4AsCmd4) {
    bringNotesForward();
    start();
    press("cmd+shift+4");
    EXPECT_THAT(logLines(), ElementsAre("[HOOK] Hook tastiera attivato", "[HOOK] 🚫 Bloccato: Cmd+4"));
    EXPECT_THAT(blocked(), ElementsAre("Cmd+4"));
    EXPECT_THAT(texts(KeyboardEvent::swallowed), ElementsAre("cmd+shift+4"));
    EXPECT_THAT(texts(KeyboardEvent::delivered), Not(Contains("cmd+shift+4")));
}

TEST_F(KeyboardHook, LetsTheOthersThroughUnsaid) {
    bringNotesForward();
    start();
    for (const char* key : {"cmd+0", "cmd+comma", "escape", "a", "f5", "alt+left", "ctrl+f", "shift+tab"}) press(key);
    EXPECT_THAT(logLines(), ElementsAre("[HOOK] Hook tastiera attivato"));
    EXPECT_THAT(blocked(), IsEmpty());
    EXPECT_THAT(texts(KeyboardEvent::swallowed), IsEmpty());
    EXPECT_THAT(texts(KeyboardEvent::delivered),
                IsSupersetOf({"cmd+0", "cmd+comma", "escape", "a", "f5", "alt+left", "ctrl+f"}));
}

TEST_F(KeyboardHook, NamesWhatIsHeldDownEachTime) {
    start();
    participant().pressKey(*virtualmac::KeyStroke::parse("cmd+q"), 3);
    mac().runFor(1);
    EXPECT_THAT(blocked(), ElementsAre("Cmd+Q", "Cmd+Q", "Cmd+Q"));
}

TEST_F(KeyboardHook, WithNobodyToTellSwallowsAndLogsAllTheSame) {
    mac().onMain([this] { hook().onKeyBlocked = nullptr; });
    start();
    press("cmd+tab");
    EXPECT_THAT(logLines(), Contains("[HOOK] 🚫 Bloccato: Cmd+Tab"));
    EXPECT_THAT(texts(KeyboardEvent::swallowed), ElementsAre("cmd+tab"));
}

TEST_F(KeyboardHook, LogsASwallowedKeyBeforeItTells) {
    std::vector<std::string> logged;
    mac().onMain([&] { hook().onKeyBlocked = [&](const std::string&) { logged.push_back(logLines().back()); }; });
    start();
    press("cmd+q");
    EXPECT_THAT(logged, ElementsAre("[HOOK] 🚫 Bloccato: Cmd+Q"));
}

TEST_F(KeyboardHook, ThatIsStoppedSwallowsNothing) {
    start();
    stop();
    press("cmd+q");
    EXPECT_THAT(texts(KeyboardEvent::swallowed), IsEmpty());
    EXPECT_THAT(blocked(), IsEmpty());
}

TEST_F(KeyboardHook, ThatTheSystemRefusesStaysInactiveAndMayBeTriedAgain) {
    mac().keyboard().refuse(1);
    start();
    EXPECT_FALSE(hook().isActive());
    EXPECT_THAT(logLines(), ElementsAre("[HOOK] Impossibile creare event tap — controlla i permessi Accessibilità"));
    EXPECT_EQ(mac().trust().prompts(), 0);
    start();
    EXPECT_TRUE(hook().isActive());
}

TEST_F(KeyboardHook, ThatTheSystemHasDisabledStaysSo) {
    start();
    // The main thread does not answer for longer than the system waits.
    mac().postToMain([this] { computer().threads.sleep(3); });
    press("cmd+q");
    mac().runFor(5);
    EXPECT_THAT(texts(KeyboardEvent::tapDisabled), ElementsAre("timeout"));
    EXPECT_TRUE(hook().isActive());
    press("cmd+q");
    EXPECT_THAT(texts(KeyboardEvent::swallowed), IsEmpty());
    EXPECT_THAT(logLines(), ElementsAre("[HOOK] Hook tastiera attivato"));
    EXPECT_EQ(mac().keyboard().enabledTaps(), 0u);
    stop();
    EXPECT_EQ(mac().leftovers().keyboardTaps, 0u);
}

TEST_F(KeyboardHook, WhosePermissionIsTakenAwayIsNotEnabledAgain) {
    start();
    mac().trust().setTrusted(false);
    press("cmd+q");
    mac().trust().setTrusted(true);
    press("cmd+q");
    EXPECT_THAT(texts(KeyboardEvent::tapDisabled), ElementsAre("user input"));
    EXPECT_THAT(texts(KeyboardEvent::swallowed), IsEmpty());
}

TEST_F(KeyboardHook, WorksWhileAnAlertIsUp) {
    start();
    mac().postToMain([this] { computer().alerts.runModal({}); });
    mac().runFor(1);
    press("cmd+space");
    EXPECT_THAT(blocked(), ElementsAre("Cmd+Space"));
    participant().answerAlert("OK");
    mac().runFor(0);
}

}  // namespace
}  // namespace vantrel
