#include <string>

#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

Control formControl(Control::Kind kind, std::string id, std::string text) {
    Control made;
    made.kind = kind;
    made.id = std::move(id);
    made.text = std::move(text);
    return made;
}

class ParticipantTest : public MacTest {
  protected:
    ParticipantTest() {
        WindowDescription description;
        description.title = "Vantrel";
        description.styleMask = windowTitled | windowClosable;
        View form{"form", {}, 0, false, {}};
        form.controls = {formControl(Control::Kind::label, "title", "Titolo"),
                         formControl(Control::Kind::textField, "name", ""),
                         formControl(Control::Kind::button, "go", "Entra")};
        form.controls.back().keyEquivalent = "\r";
        View end{"end", {}, 0, true, {formControl(Control::Kind::button, "back", "Indietro")}};
        description.views = {form, end};
        mac().onMain([this, &description] {
            window_ = computer().windows.makeWindow(
                description, [this](std::string_view id) { computer().log.print("action " + std::string(id)); });
        });
    }
    void TearDown() override {
        mac().onMain([this] {
            item_.reset();
            window_.reset();
        });
        MacTest::TearDown();
    }

    void show() {
        mac().onMain([this] { window_->makeKeyAndOrderFront(); });
    }
    void installItem() {
        mac().onMain([this] {
            item_ = computer().statusBar.statusItem(variableStatusItemLength);
            item_->setButtonTitle("🔒 Vantrel");
            Menu menu;
            menu.items = {{MenuItem::Kind::action, "Corso [ABC]", "", "", false, nullptr, {}},
                          MenuItem::separator(),
                          {MenuItem::Kind::action,
                           "Termina sessione",
                           "menuEndSession",
                           "",
                           true,
                           [this] { computer().log.print("end chosen"); },
                           {}}};
            item_->setMenu(menu);
        });
    }
    /// Lets it happen and returns why it was ignored.
    std::string ignored() {
        mac().runFor(0);
        return events<Deed>().back().field(Field::ignored);
    }

    std::unique_ptr<Window> window_;
    std::unique_ptr<StatusItem> item_;
};

TEST_F(ParticipantTest, AnswersAnAlertThatCameUpOverAnOpenMenuFirst) {
    installItem();
    participant().openStatusMenu();
    mac().runFor(0);
    computer().dispatch.mainQueue().async([this] {
        const auto answer = computer().alerts.runModal({AlertStyle::warning, "Uno", "", {"A", "B"}});
        computer().log.print("answer " + std::to_string(answer));
    });
    mac().runFor(0);
    participant().chooseMenuItem("Termina sessione");
    EXPECT_EQ("an alert is up", ignored());
    participant().closeMenu();
    EXPECT_EQ("an alert is up", ignored());
    participant().openStatusMenu();
    EXPECT_EQ("an alert is up", ignored());
    participant().pressReturn();
    EXPECT_EQ("", ignored());
    EXPECT_EQ(Lines{"answer 0"}, logLines());
    EXPECT_TRUE(mac().menus().isOpen());
    participant().press("go");
    EXPECT_EQ("a menu is open", ignored());
    participant().chooseMenuItem("Termina sessione");
    EXPECT_EQ("", ignored());
    EXPECT_EQ((Lines{"answer 0", "end chosen"}), logLines());
}

TEST_F(ParticipantTest, LeavesAnAlertAloneUnderAMenuThatOpenedLater) {
    installItem();
    mac().postToMain([this] { computer().alerts.runModal({AlertStyle::warning, "Uno", "", {"A", "B"}}); });
    mac().runFor(0);
    mac().postToMain([this] { mac().menus().track("Menu", mac().statusBar().items().front().menu); });
    mac().runFor(0);
    participant().answerAlert("A");
    EXPECT_EQ("a menu is open", ignored());
    participant().pressReturn();
    EXPECT_EQ("a menu is open", ignored());
    participant().closeMenu();
    EXPECT_EQ("", ignored());
    participant().answerAlert("A");
    EXPECT_EQ("", ignored());
    EXPECT_EQ(0U, mac().alerts().up().size());
}

TEST_F(ParticipantTest, KeepsAMenuThatIsNotTheRemovedItems) {
    installItem();
    mac().postToMain([this] { mac().menus().track("Menu", mac().statusBar().items().front().menu); });
    mac().runFor(0);
    mac().onMain([this] { item_.reset(); });
    EXPECT_TRUE(mac().menus().isOpen());
}

TEST_F(ParticipantTest, TypesIntoAFieldThatIsOnTheScreen) {
    show();
    participant().type("name", "Ada");
    EXPECT_EQ("", ignored());
    participant().type("name", "Grace");
    EXPECT_EQ("", ignored());
    EXPECT_EQ("Grace", mac().windows().front()->text("name"));
    EXPECT_EQ("Grace", events<Deed>().back().field(Field::value));
}

TEST_F(ParticipantTest, CannotTypeWhereNoFieldCanBeUsed) {
    participant().type("name", "Ada");
    EXPECT_EQ("it is not on the screen", ignored());
    show();
    participant().type("nobody", "Ada");
    EXPECT_EQ("it is not on the screen", ignored());
    participant().type("title", "Ada");
    EXPECT_EQ("it is not a text field", ignored());
    mac().onMain([this] { window_->setEnabled("name", false); });
    participant().type("name", "Ada");
    EXPECT_EQ("it is disabled", ignored());
    mac().onMain([this] { window_->setEnabled("name", true), window_->setViewHidden("form", true); });
    participant().type("name", "Ada");
    EXPECT_EQ("it is not on the screen", ignored());
    EXPECT_EQ("", mac().windows().front()->text("name"));
}

TEST_F(ParticipantTest, PressesAButtonByIdTitleOrReturn) {
    show();
    participant().press("go");
    participant().press("Entra");
    participant().pressReturn();
    EXPECT_EQ("", ignored());
    EXPECT_EQ((Lines{"action go", "action go", "action go"}), logLines());
}

TEST_F(ParticipantTest, CannotPressWhatIsHiddenDisabledOrNoButton) {
    show();
    participant().press("back");
    EXPECT_EQ("it is not on the screen", ignored());
    participant().press("Indietro");
    EXPECT_EQ("it is not on the screen", ignored());
    participant().press("name");
    EXPECT_EQ("it is not a button", ignored());
    mac().onMain([this] { window_->setEnabled("go", false); });
    participant().press("go");
    EXPECT_EQ("it is disabled", ignored());
    participant().pressReturn();
    EXPECT_EQ("it is disabled", ignored());
    EXPECT_EQ(Lines{}, logLines());
}

TEST_F(ParticipantTest, ChoosesFromTheStatusMenu) {
    installItem();
    forgetEvents();
    participant().openStatusMenu();
    mac().runFor(1);
    EXPECT_TRUE(mac().menus().isOpen());
    participant().chooseMenuItem("Corso [ABC]");
    EXPECT_EQ("the menu has no such item to choose", ignored());
    participant().press("go");
    EXPECT_EQ("a menu is open", ignored());
    participant().chooseMenuItem("Termina sessione");
    EXPECT_EQ("", ignored());
    EXPECT_FALSE(mac().menus().isOpen());
    EXPECT_EQ((Happenings{
                  {Deed::openStatusMenu},
                  {MenuEvent::opened, "🔒 Vantrel"},
                  {Deed::chooseMenuItem, "Corso [ABC]", {{Field::ignored, "the menu has no such item to choose"}}},
                  {Deed::press, "go", {{Field::ignored, "a menu is open"}}},
                  {Deed::chooseMenuItem, "Termina sessione"},
                  {MenuEvent::closed, "🔒 Vantrel", {{Field::chosen, "Termina sessione"}}},
                  {ClientEvent::log, "end chosen"},
              }),
              transcript());
}

TEST_F(ParticipantTest, ClosesAMenuWithoutAChoice) {
    participant().closeMenu();
    EXPECT_EQ("no menu is open", ignored());
    participant().openStatusMenu();
    EXPECT_EQ("there is no status item", ignored());
    installItem();
    participant().openStatusMenu();
    mac().runFor(1);
    participant().closeMenu();
    EXPECT_EQ("", ignored());
    EXPECT_EQ(Lines{}, logLines());
    EXPECT_FALSE(mac().menus().isOpen());
}

TEST_F(ParticipantTest, SeesTheStatusItemComeAndGo) {
    installItem();
    EXPECT_EQ(1U, mac().leftovers().statusItems);
    mac().onMain([this] { computer().statusBar.removeStatusItem(*item_); });
    EXPECT_EQ(0U, mac().leftovers().statusItems);
    mac().onMain([this] { item_.reset(); });
    EXPECT_EQ((Happenings{
                  {StatusItemEvent::installed},
                  {StatusItemEvent::title, "🔒 Vantrel"},
                  {StatusItemEvent::menu,
                   {},
                   {{Field::item, "[Corso [ABC]]"}, {Field::item, "-"}, {Field::item, "Termina sessione"}}},
                  {StatusItemEvent::removed, "🔒 Vantrel"},
              }),
              transcript());
}

TEST_F(ParticipantTest, ClosesAWindowThatHasACloseButton) {
    show();
    mac().onMain([this] { window_->setStyleMask(windowTitled); });
    participant().closeWindow();
    EXPECT_EQ("it has no close button", ignored());
    mac().onMain([this] { window_->setStyleMask(windowTitled | windowClosable); });
    participant().closeWindow();
    EXPECT_EQ("", ignored());
    EXPECT_EQ(0U, mac().leftovers().visibleWindows);
    participant().closeWindow();
    EXPECT_EQ("no window is on the screen", ignored());
}

TEST_F(ParticipantTest, WaitsForAMainThreadThatIsBusy) {
    show();
    mac().postToMain([this] { computer().threads.sleep(5); });
    participant().press("go");
    mac().runFor(4.9);
    EXPECT_EQ(Lines{}, logLines());
    mac().runFor(0.1);
    EXPECT_EQ(Lines{"action go"}, logLines());
}

TEST_F(ParticipantTest, AnswersPermissionPromptsWhateverTheApplicationShows) {
    mac().capture().setStatus(MediaType::audio, AuthorizationStatus::notDetermined);
    participant().answerPermissionPrompt(true);
    EXPECT_EQ("no permission prompt is up", ignored());
    mac().postToMain([this] {
        computer().captureAuthorization.requestAccess(
            MediaType::audio, [this](bool granted) { computer().log.print(granted ? "granted" : "refused"); });
        computer().alerts.runModal({AlertStyle::warning, "Uno", "", {}});
    });
    mac().runFor(1);
    EXPECT_EQ(1U, mac().leftovers().prompts);
    participant().answerPermissionPrompt(true);
    EXPECT_EQ("", ignored());
    EXPECT_EQ(Lines{"granted"}, logLines());
    EXPECT_EQ(AuthorizationStatus::authorized, computer().captureAuthorization.status(MediaType::audio));
}

}  // namespace
}  // namespace vantrel::virtualmac
