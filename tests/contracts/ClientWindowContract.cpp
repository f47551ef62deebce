#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/contracts/ContractTest.h"
#include "tests/contracts/InterfaceHost.h"

namespace vantrel::contracts {
namespace {

/// The client's own windows.
class ClientWindowContract : public ContractTest {
  protected:
    using Seen = std::optional<InterfaceHost::SeenControl>;

    void TearDown() override {
        host().onMain([this] { windows.clear(); });
        ContractTest::TearDown();
    }

    InterfaceHost& participant() { return dynamic_cast<InterfaceHost&>(host()); }

    static Control control(Control::Kind kind, std::string id, std::string text, const Rect& frame) {
        Control made;
        made.kind = kind;
        made.id = std::move(id);
        made.text = std::move(text);
        made.frame = frame;
        return made;
    }

    static WindowDescription form(const std::string& title = "Vantrel") {
        using Kind = Control::Kind;
        View join{"join", {{0, 0}, {300, 240}}, viewWidthSizable | viewHeightSizable, false, {}};
        join.controls = {control(Kind::label, "title", "Inserisci i dati", {{20, 200}, {260, 20}}),
                         control(Kind::separator, "", "", {{20, 190}, {260, 1}}),
                         control(Kind::textField, "name", "", {{20, 150}, {260, 24}}),
                         control(Kind::wrappingLabel, "error", "", {{20, 90}, {260, 40}}),
                         control(Kind::button, "start", "Avvia", {{20, 40}, {120, 32}}),
                         control(Kind::button, "quit", "Esci", {{150, 40}, {120, 32}})};
        join.controls[2].placeholder = "Nome e cognome";
        join.controls[4].keyEquivalent = "\r";
        View end{"end", {{0, 0}, {300, 240}}, 0, true, {}};
        end.controls = {control(Kind::label, "message", "Fine", {{20, 200}, {260, 20}}),
                        control(Kind::button, "again", "Nuova sessione", {{20, 40}, {160, 32}})};
        WindowDescription description;
        description.contentRect = {{40, 40}, {300, 240}};
        description.styleMask = windowTitled | windowClosable;
        description.title = title;
        description.views = {join, end};
        return description;
    }

    void make(const WindowDescription& description) {
        host().onMain([&] {
            windows.push_back(computer().windows.makeWindow(description, [this](std::string_view id) {
                note(std::string(id) + (computer().threads.isMainThread() ? "" : " off the main thread"));
                if (onPress) onPress();
            }));
        });
    }

    void open() {
        make(form());
        host().onMain([this] { windows.back()->makeKeyAndOrderFront(); });
        ASSERT_TRUE(shown({"Vantrel"}));
    }

    bool shown(const Notes& titles) {
        return eventually([&] { return participant().windowsShown() == titles; });
    }

    bool sees(const std::string& id, const Seen& wanted) {
        return eventually([&] { return participant().controlShown(id) == wanted; });
    }

    std::optional<std::string> text(const std::string& id) {
        std::optional<std::string> found;
        host().onMain([&] { found = windows.back()->text(id); });
        return found;
    }

    std::vector<std::unique_ptr<Window>> windows;
    Block onPress;
};

TEST_F(ClientWindowContract, NoCallRunsWhatTheRunLoopHasToDo) {
    EXPECT_TRUE(keepTheRunLoopWaiting([this] {
        const auto window = computer().windows.makeWindow(form(), [](std::string_view) {});
        window->center();
        window->setIsVisible(true);
        window->makeKeyAndOrderFront();
        computer().application.activate();
        window->setText("error", "Errore");
        window->setEnabled("start", false);
        window->setViewHidden("join", true);
        window->setStyleMask(windowTitled);
        window->orderOut();
    }));
}

TEST_F(ClientWindowContract, AWindowIsOnTheScreenWhileItIsOrderedIn) {
    make(form());
    host().letTimePass(0.2);
    EXPECT_EQ(participant().windowsShown(), Notes{});
    host().onMain([this] { windows.back()->makeKeyAndOrderFront(); });
    EXPECT_TRUE(shown({"Vantrel"}));
    host().onMain([this] { windows.back()->orderOut(); });
    EXPECT_TRUE(shown({}));
    host().onMain([this] { windows.back()->setIsVisible(true); });
    EXPECT_TRUE(shown({"Vantrel"}));
    host().onMain([this] { windows.back()->setIsVisible(false); });
    EXPECT_TRUE(shown({}));
}

TEST_F(ClientWindowContract, ADestroyedWindowIsGone) {
    for (int round = 0; round < 5; ++round) {
        open();
        host().onMain([this] { windows.clear(); });
        EXPECT_TRUE(shown({}));
    }
}

TEST_F(ClientWindowContract, TheWindowOrderedToTheFrontLastIsInFront) {
    make(form("Prima"));
    make(form("Seconda"));
    host().onMain([this] {
        windows[0]->makeKeyAndOrderFront();
        windows[1]->makeKeyAndOrderFront();
    });
    EXPECT_TRUE(shown({"Seconda", "Prima"}));
    host().onMain([this] { windows[0]->makeKeyAndOrderFront(); });
    EXPECT_TRUE(shown({"Prima", "Seconda"}));
}

TEST_F(ClientWindowContract, ShowsTheControlsOfTheViewsThatAreNotHidden) {
    open();
    EXPECT_TRUE(sees("title", {{"Inserisci i dati", true}}));
    EXPECT_TRUE(sees("name", {{"", true}}));
    EXPECT_TRUE(sees("start", {{"Avvia", true}}));
    EXPECT_TRUE(sees("message", std::nullopt));
    EXPECT_TRUE(sees("again", std::nullopt));
    host().onMain([this] {
        windows.back()->setViewHidden("join", true);
        windows.back()->setViewHidden("end", false);
    });
    EXPECT_TRUE(sees("title", std::nullopt));
    EXPECT_TRUE(sees("start", std::nullopt));
    EXPECT_TRUE(sees("message", {{"Fine", true}}));
    EXPECT_TRUE(sees("again", {{"Nuova sessione", true}}));
}

TEST_F(ClientWindowContract, ATextIsReadAndSeenAsItWasSet) {
    open();
    for (const char* id : {"title", "name", "error", "start"}) {
        for (const std::string& wanted : {std::string("Perché? 🔒 – «sì» & no"), std::string(), std::string("x")}) {
            host().onMain([&] { windows.back()->setText(id, wanted); });
            EXPECT_EQ(text(id), wanted) << id;
            EXPECT_TRUE(sees(id, {{wanted, true}})) << id << ": " << wanted;
        }
    }
    EXPECT_EQ(notes(), Notes{}) << "setting a text presses nothing";
}

TEST_F(ClientWindowContract, ATextThatIsNoUTF8IsMadeSo) {
    open();
    host().onMain([this] { windows.back()->setText("title", "a\xffz"); });
    EXPECT_TRUE(sees("title", {{"a\uFFFDz", true}}));
    EXPECT_EQ("a\uFFFDz", text("title"));
}

TEST_F(ClientWindowContract, TextsAreThereBeforeTheWindowIsShownAndInHiddenViews) {
    make(form());
    EXPECT_EQ(text("title"), "Inserisci i dati");
    EXPECT_EQ(text("name"), "");
    EXPECT_EQ(text("again"), "Nuova sessione");
    host().onMain([this] {
        windows.back()->setText("name", "Ada");
        windows.back()->setText("message", "Sessione terminata");
    });
    EXPECT_EQ(text("name"), "Ada");
    EXPECT_EQ(text("message"), "Sessione terminata");
    host().onMain([this] { windows.back()->makeKeyAndOrderFront(); });
    EXPECT_TRUE(sees("name", {{"Ada", true}}));
}

TEST_F(ClientWindowContract, TheTextOfASeparatorIsEmpty) {
    WindowDescription description = form();
    description.views[0].controls[1].id = "line";
    make(description);
    EXPECT_EQ(text("line"), "");
}

TEST_F(ClientWindowContract, AnUnknownControlHasNoText) {
    make(form());
    for (const char* id : {"nobody", "", "join", "Title"}) EXPECT_EQ(text(id), std::nullopt) << id;
}

TEST_F(ClientWindowContract, WhatTheParticipantTypesIsRead) {
    open();
    participant().typeInto("name", "Niccolò D’Àmico");
    EXPECT_TRUE(eventually([&] { return text("name") == "Niccolò D’Àmico"; }));
    participant().typeInto("name", "");
    EXPECT_TRUE(eventually([&] { return text("name") == ""; }));
    EXPECT_EQ(notes(), Notes{});
}

TEST_F(ClientWindowContract, APressTellsTheButtonsIdOnTheMainThread) {
    open();
    participant().pressButton("start");
    ASSERT_TRUE(noted(1));
    participant().pressButton("quit");
    ASSERT_TRUE(noted(2));
    participant().pressButton("start");
    ASSERT_TRUE(noted(3));
    EXPECT_EQ(notes(), (Notes{"start", "quit", "start"}));
}

TEST_F(ClientWindowContract, ADisabledButtonIsSeenAndNotPressed) {
    open();
    host().onMain([this] { windows.back()->setEnabled("start", false); });
    EXPECT_TRUE(sees("start", {{"Avvia", false}}));
    participant().pressButton("start");
    participant().pressButton("quit");
    ASSERT_TRUE(noted(1));
    host().onMain([this] { windows.back()->setEnabled("start", true); });
    EXPECT_TRUE(sees("start", {{"Avvia", true}}));
    participant().pressButton("start");
    ASSERT_TRUE(noted(2));
    EXPECT_EQ(notes(), (Notes{"quit", "start"}));
}

TEST_F(ClientWindowContract, AButtonOfAHiddenViewIsNotPressed) {
    open();
    participant().pressButton("again");
    participant().pressButton("start");
    ASSERT_TRUE(noted(1));
    host().letTimePass(0.1);
    EXPECT_EQ(notes(), Notes{"start"});
}

TEST_F(ClientWindowContract, ReturnPressesTheButtonThatItIsTheKeyOf) {
    open();
    participant().pressReturn();
    ASSERT_TRUE(noted(1));
    host().letTimePass(0.1);
    EXPECT_EQ(notes(), Notes{"start"});
}

TEST_F(ClientWindowContract, ReturnPressesNoButtonOfAHiddenView) {
    open();
    host().onMain([this] {
        windows.back()->setViewHidden("join", true);
        windows.back()->setViewHidden("end", false);
    });
    ASSERT_TRUE(sees("again", {{"Nuova sessione", true}}));
    participant().pressReturn();
    host().letTimePass(0.2);
    EXPECT_EQ(notes(), Notes{});
    host().onMain([this] { windows.back()->setViewHidden("join", false); });
    ASSERT_TRUE(sees("start", {{"Avvia", true}}));
    participant().pressReturn();
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(notes(), Notes{"start"});
}

TEST_F(ClientWindowContract, AHandlerMayDestroyItsWindow) {
    open();
    onPress = [this] {
        windows.clear();
        note("destroyed");
    };
    participant().pressButton("start");
    ASSERT_TRUE(noted(2));
    EXPECT_TRUE(shown({}));
    EXPECT_EQ(notes(), (Notes{"start", "destroyed"}));
}

TEST_F(ClientWindowContract, AHandlerThatDestroysItsWindowLivesUntilItReturns) {
    std::weak_ptr<int> watched;
    host().onMain([&] {
        auto owned = std::make_shared<int>();
        watched = owned;
        const auto run = [this, &watched] {
            windows.clear();
            note(watched.expired() ? "already gone" : "still there");
        };
        windows.push_back(computer().windows.makeWindow(form(), [owned, run](std::string_view) {
            const auto running = run;
            running();
        }));
        windows.back()->makeKeyAndOrderFront();
    });
    ASSERT_TRUE(shown({"Vantrel"}));
    participant().pressButton("start");
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(notes(), Notes{"still there"});
    EXPECT_TRUE(eventually([&] { return watched.expired(); }));
}

TEST_F(ClientWindowContract, APressThatEndsAfterItsWindowTellsNobody) {
    open();
    const Block release = participant().heldPress("start");
    host().onMain([this, &release] {
        windows.clear();
        release();
    });
    host().letTimePass(0.2);
    EXPECT_EQ(notes(), Notes{});
}

TEST_F(ClientWindowContract, APressThatEndsInItsWindowTellsTheButtonsId) {
    open();
    host().onMain(participant().heldPress("start"));
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(notes(), Notes{"start"});
}

TEST_F(ClientWindowContract, TheStyleIsReadAsItWasSet) {
    open();
    const auto style = [this] {
        unsigned mask = 0;
        host().onMain([&] { mask = windows.back()->styleMask(); });
        return mask;
    };
    EXPECT_EQ(style(), windowTitled | windowClosable);
    host().onMain([this] { windows.back()->setStyleMask(windowTitled); });
    EXPECT_EQ(style(), windowTitled);
    EXPECT_TRUE(shown({"Vantrel"}));
    host().onMain([this] { windows.back()->setStyleMask(windowTitled | windowClosable | windowMiniaturizable); });
    EXPECT_EQ(style(), windowTitled | windowClosable | windowMiniaturizable);
    EXPECT_TRUE(shown({"Vantrel"}));
}

TEST_F(ClientWindowContract, AScreenReaderCallsAFieldByItsLabel) {
    WindowDescription description = form();
    description.views[0].controls[2].accessibilityLabel = "Nome e cognome: «Ada»";
    make(description);
    host().onMain([this] { windows.back()->makeKeyAndOrderFront(); });
    ASSERT_TRUE(sees("name", {{"", true}}));
    EXPECT_EQ(participant().accessibilityLabel("name"), "Nome e cognome: «Ada»");
    participant().typeInto("name", "Ada Neri");
    EXPECT_EQ(participant().accessibilityLabel("name"), "Nome e cognome: «Ada»");
}

TEST_F(ClientWindowContract, TabGoesThroughTheControlsInTheirOrder) {
    open();
    EXPECT_EQ(participant().tabOrder(), (Notes{"name", "start", "quit"}));
    host().onMain([this] {
        windows.back()->setEnabled("start", false);
        windows.back()->setViewHidden("end", false);
    });
    EXPECT_TRUE(eventually([this] { return participant().tabOrder() == Notes{"name", "quit", "again"}; }));
    host().onMain([this] { windows.back()->setViewHidden("join", true); });
    EXPECT_TRUE(eventually([this] { return participant().tabOrder() == Notes{"again"}; }));
}

TEST_F(ClientWindowContract, AScreenReaderIsToldAStatusThatIsOnTheScreen) {
    if (!participant().announcements()) GTEST_SKIP() << "here a test cannot hear what a screen reader is told";
    WindowDescription description = form();
    description.views[0].controls[0].announced = true;
    description.views[1].controls[0].announced = true;
    make(description);
    const auto set = [this](const char* id, const char* text) {
        host().onMain([&] { windows.back()->setText(id, text); });
    };
    const auto told = [this](const Notes& texts) {
        return eventually([&] { return participant().announcements() == texts; });
    };
    set("title", "");
    host().onMain([this] { windows.back()->makeKeyAndOrderFront(); });
    ASSERT_TRUE(shown({"Vantrel"}));
    set("title", "Attendi");
    EXPECT_TRUE(told({"Attendi"}));
    set("title", "Attendi");
    set("title", "");
    set("error", "nobody hears this");
    set("title", "Errore — «x»");
    EXPECT_TRUE(told({"Attendi", "Errore — «x»"}));
    set("message", "Terminata");
    host().letTimePass(0.1);
    EXPECT_TRUE(told({"Attendi", "Errore — «x»"})) << "not before it is seen";
    host().onMain([this] {
        windows.back()->setViewHidden("join", true);
        windows.back()->setViewHidden("end", false);
    });
    EXPECT_TRUE(told({"Attendi", "Errore — «x»", "Terminata"}));
    host().onMain([this] { windows.back()->orderOut(); });
    set("message", "Di nuovo");
    host().letTimePass(0.1);
    EXPECT_TRUE(told({"Attendi", "Errore — «x»", "Terminata"})) << "not while the window is away";
    host().onMain([this] { windows.back()->makeKeyAndOrderFront(); });
    EXPECT_TRUE(told({"Attendi", "Errore — «x»", "Terminata", "Di nuovo"}));
}

TEST_F(ClientWindowContract, ACenteredWindowIsOnTheScreen) {
    make(form());
    host().onMain([this] {
        windows.back()->center();
        windows.back()->makeKeyAndOrderFront();
    });
    EXPECT_TRUE(shown({"Vantrel"}));
    EXPECT_TRUE(sees("start", {{"Avvia", true}}));
}

}  // namespace
}  // namespace vantrel::contracts
