#include <atomic>
#include <memory>

#include "tests/contracts/ContractTest.h"
#include "tests/contracts/KeyboardHost.h"

namespace vantrel::contracts {
namespace {

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyS = 1;
constexpr std::int64_t keyQ = 12;
constexpr std::int64_t keyW = 13;
constexpr std::uint64_t shift = 0x20000;
constexpr std::uint64_t control = 0x40000;
constexpr std::uint64_t option = 0x80000;
constexpr std::uint64_t command = 0x100000;

std::string_view commandQorW(const KeyEvent& event) noexcept {
    if (event.type != KeyEventType::keyDown || (event.flags & command) == 0) return {};
    if (event.keyCode == keyQ) return "Cmd+Q";
    return event.keyCode == keyW ? "Cmd+W" : std::string_view();
}

// Names every letter pressed with exactly all four modifiers.
std::string_view allFour(const KeyEvent& event) noexcept {
    constexpr std::uint64_t all = shift | control | option | command;
    return event.type == KeyEventType::keyDown && (event.flags & all) == all ? "all four" : std::string_view();
}

std::atomic<std::uint64_t> flagsChanged = 0;
std::string_view gatherFlags(const KeyEvent& event) noexcept {
    if (event.type == KeyEventType::flagsChanged) flagsChanged |= event.flags;
    return {};
}

class KeyboardContract : public ContractTest {
  protected:
    using Keys = std::vector<std::int64_t>;

    void TearDown() override {
        if (tap) host().onMain([this] { tap.reset(); });
        ContractTest::TearDown();
    }

    KeyboardHost& keyboard() { return dynamic_cast<KeyboardHost&>(host()); }

    bool start(KeyDecision decision = commandQorW) {
        host().onMain([this, decision] {
            tap = computer().keyboardTaps.create(decision, [this](std::string_view name) {
                note(std::string(name) + (computer().threads.isMainThread() ? "" : " off the main thread"));
            });
        });
        return tap != nullptr;
    }

    void stop() {
        host().onMain([this] { tap.reset(); });
    }

    bool received(const Keys& keys) {
        return eventually([&] { return keyboard().keysReceived().size() >= keys.size(); }) &&
               keyboard().keysReceived() == keys;
    }

    std::unique_ptr<KeyboardTap> tap;
};

TEST_F(KeyboardContract, AKeyThatPassesReachesTheWindowAndIsNotReported) {
    ASSERT_TRUE(start());
    keyboard().pressKey(keyA, 0);
    keyboard().pressKey(keyQ, 0);
    keyboard().pressKey(keyS, command);
    EXPECT_TRUE(received({keyA, keyQ, keyS}));
    EXPECT_EQ(notes(), Notes{});
}

TEST_F(KeyboardContract, ANamedKeyIsSwallowedAndReportedOnTheMainThreadInOrder) {
    ASSERT_TRUE(start());
    keyboard().pressKey(keyQ, command);
    keyboard().pressKey(keyW, command);
    keyboard().pressKey(keyA, 0);
    keyboard().pressKey(keyQ, command | shift);
    keyboard().pressKey(keyS, 0);
    EXPECT_TRUE(received({keyA, keyS}));
    ASSERT_TRUE(noted(3));
    EXPECT_EQ(notes(), (Notes{"Cmd+Q", "Cmd+W", "Cmd+Q"}));
}

TEST_F(KeyboardContract, TheDecisionSeesEveryModifier) {
    ASSERT_TRUE(start(allFour));
    keyboard().pressKey(keyQ, shift | control | option | command);
    keyboard().pressKey(keyA, shift | control | option);
    keyboard().pressKey(keyS, 0);
    EXPECT_TRUE(received({keyA, keyS}));
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(notes(), Notes{"all four"});
}

TEST_F(KeyboardContract, ModifierKeysChangeFlags) {
    flagsChanged = 0;
    ASSERT_TRUE(start(gatherFlags));
    keyboard().pressKey(keyA, shift | command);
    ASSERT_TRUE(received({keyA}));
    EXPECT_EQ(flagsChanged & (shift | control | option | command), shift | command);
}

TEST_F(KeyboardContract, AfterTheTapsEndKeysReachTheWindowAgain) {
    ASSERT_TRUE(start());
    keyboard().pressKey(keyQ, command);
    ASSERT_TRUE(noted(1));
    stop();
    keyboard().pressKey(keyQ, command);
    EXPECT_TRUE(received({keyQ}));
    EXPECT_EQ(notes().size(), 1U);
}

TEST_F(KeyboardContract, AnotherTapMayFollow) {
    for (std::size_t round = 1; round <= 5; ++round) {
        ASSERT_TRUE(start());
        keyboard().pressKey(keyQ, command);
        EXPECT_TRUE(noted(round));
        stop();
    }
    keyboard().pressKey(keyA, 0);
    EXPECT_TRUE(received({keyA}));
    EXPECT_EQ(notes().size(), 5U);
}

TEST_F(KeyboardContract, ATapMayEndInItsOwnReport) {
    host().onMain([this] {
        tap = computer().keyboardTaps.create(commandQorW, [this](std::string_view name) {
            tap.reset();
            note(std::string(name));
        });
    });
    ASSERT_TRUE(tap);
    keyboard().pressKey(keyQ, command);
    ASSERT_TRUE(noted(1));
    keyboard().pressKey(keyQ, command);
    EXPECT_TRUE(received({keyQ}));
    EXPECT_EQ(notes(), Notes{"Cmd+Q"});
}

TEST_F(KeyboardContract, AReportThatEndsItsTapLivesUntilItReturns) {
    std::weak_ptr<int> watched;
    host().onMain([&] {
        auto owned = std::make_shared<int>();
        watched = owned;
        const auto run = [this, &watched] {
            tap.reset();
            note(watched.expired() ? "already gone" : "still there");
        };
        tap = computer().keyboardTaps.create(commandQorW, [owned, run](std::string_view) {
            const auto running = run;
            running();
        });
    });
    ASSERT_TRUE(tap);
    keyboard().pressKey(keyQ, command);
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(notes(), Notes{"still there"});
    EXPECT_TRUE(eventually([&] { return watched.expired(); }));
}

TEST_F(KeyboardContract, ASwallowedKeyNeedsNoReport) {
    host().onMain([this] { tap = computer().keyboardTaps.create(commandQorW, {}); });
    ASSERT_TRUE(tap);
    keyboard().pressKey(keyQ, command);
    keyboard().pressKey(keyA, 0);
    EXPECT_TRUE(received({keyA}));
}

TEST_F(KeyboardContract, TheTapGoesOnUnderAnAlertThatAMainQueueBlockOpened) {
    ASSERT_TRUE(start());
    computer().dispatch.mainQueue().async([this] {
        computer().alerts.runModal({AlertStyle::warning, "Domanda", "Perché?", {"Continua"}});
        note("dismissed");
    });
    host().letTimePass(0.3);
    keyboard().pressKey(keyQ, command);
    EXPECT_TRUE(noted(1));
    EXPECT_EQ(notes(), Notes{"Cmd+Q"});
    host().pressAlertButton("Continua");
    ASSERT_TRUE(noted(2));
    EXPECT_EQ(notes(), (Notes{"Cmd+Q", "dismissed"}));
}

TEST_F(KeyboardContract, ATapWhoseMainThreadHangsIsDisabledAndStaysSo) {
    ASSERT_TRUE(start());
    // The first key of a test may be slow, because a window is opened for it.
    keyboard().pressKey(keyS, 0);
    ASSERT_TRUE(received({keyS}));
    host().postToMain([this] {
        computer().threads.sleep(3);
        note("awake");
    });
    host().letTimePass(0.2);
    keyboard().pressKey(keyA, 0);
    ASSERT_TRUE(noted(1));
    ASSERT_TRUE(received({keyS, keyA}));
    keyboard().pressKey(keyQ, command);
    EXPECT_TRUE(received({keyS, keyA, keyQ}));
    host().letTimePass(0.5);
    keyboard().pressKey(keyQ, command);
    EXPECT_TRUE(received({keyS, keyA, keyQ, keyQ}));
    EXPECT_EQ(notes(), Notes{"awake"});
}

}  // namespace
}  // namespace vantrel::contracts
