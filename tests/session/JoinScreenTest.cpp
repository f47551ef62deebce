#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "server/ServerAddress.h"
#include "session/EndScreen.h"
#include "session/JoinScreen.h"
#include "tests/session/ClientTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using virtualmac::NetworkAnswer;

using Kind = Control::Kind;

class JoinScreenTest : public ClientTest {};

class FreshJoinScreenTest : public ClientTest {
  protected:
    static virtualmac::Options newcomer() {
        auto options = returningParticipant();
        options.settings = {};
        return options;
    }
    FreshJoinScreenTest() : ClientTest(newcomer()) {}

    void fill(const std::string& address, const std::string& code, const std::string& name, const std::string& email) {
        participant().type("serverUrlField", address);
        participant().type("sessionCodeField", code);
        participant().type("fullNameField", name);
        participant().type("emailField", email);
        participant().pressReturn();
        mac().runFor(0);
    }
};

/// What the join screen's layout says about a control.
struct Row {
    Kind kind;
    std::string id;
    std::string text;
    Font font;
    TextColor color;
    Rect frame;
};

void expectRows(const View& view, const std::vector<Row>& rows) {
    ASSERT_EQ(view.controls.size(), rows.size());
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const auto& control = view.controls[index];
        const auto& row = rows[index];
        SCOPED_TRACE(index);
        EXPECT_EQ(control.kind, row.kind);
        EXPECT_EQ(control.id, row.id);
        EXPECT_EQ(control.text, row.text);
        EXPECT_EQ(control.font, row.font);
        EXPECT_EQ(control.color, row.color);
        EXPECT_EQ(control.frame, row.frame);
    }
}

constexpr Font twelve{12, false};
constexpr auto plain = TextColor::standard;

TEST(JoinScreen, HasItsControlsInTheirPlaces) {
    const auto view = JoinScreen::view({{0, 0}, {440, 460}}, "2.0-macOS");
    EXPECT_EQ(view.frame, (Rect{{0, 0}, {440, 460}}));
    EXPECT_EQ(view.autoresizingMask, 18u);
    EXPECT_FALSE(view.hidden);
    expectRows(view, {{Kind::label, "", "🔒 Vantrel", {26, true}, plain, {{24, 408}, {392, 34}}},
                      {Kind::label,
                       "",
                       "Inserisci i dati ricevuti dal formatore",
                       twelve,
                       TextColor::secondaryLabel,
                       {{24, 384}, {392, 18}}},
                      {Kind::label, "", "Server Vantrel:", twelve, plain, {{24, 352}, {392, 18}}},
                      {Kind::textField, "serverUrlField", "", {}, plain, {{24, 324}, {392, 24}}},
                      {Kind::separator, "", "", {}, plain, {{24, 310}, {392, 1}}},
                      {Kind::label, "", "Codice sessione:", twelve, plain, {{24, 288}, {392, 18}}},
                      {Kind::textField, "sessionCodeField", "", {}, plain, {{24, 262}, {392, 24}}},
                      {Kind::label, "", "Nome e cognome:", twelve, plain, {{24, 232}, {392, 18}}},
                      {Kind::textField, "fullNameField", "", {}, plain, {{24, 206}, {392, 24}}},
                      {Kind::label, "", "Email:", twelve, plain, {{24, 176}, {392, 18}}},
                      {Kind::textField, "emailField", "", {}, plain, {{24, 150}, {392, 24}}},
                      {Kind::label, "errorLabel", "", twelve, TextColor::systemRed, {{24, 122}, {392, 18}}},
                      {Kind::button, "joinButton", "Avvia sessione protetta", {}, plain, {{24, 80}, {210, 32}}},
                      {Kind::label,
                       "",
                       "v2.0-macOS — a cura del gruppo Vantrel",
                       {10, false},
                       TextColor::tertiaryLabel,
                       {{24, 50}, {392, 16}}}});
    EXPECT_EQ(view.controls[3].placeholder, defaultServerAddress);
    EXPECT_EQ(view.controls[6].placeholder, "es. NQRP5D");
    EXPECT_EQ(view.controls[8].placeholder, "Maria Bianchi");
    EXPECT_EQ(view.controls[10].placeholder, "maria.bianchi@example.com");
    EXPECT_EQ(view.controls[12].keyEquivalent, "\r");
    EXPECT_EQ(view.controls[12].action, "joinTapped");
}

TEST(EndScreen, HasItsControlsInTheirPlacesAndIsHiddenAtFirst) {
    const auto view = EndScreen::view({{0, 0}, {440, 460}});
    EXPECT_EQ(view.autoresizingMask, 18u);
    EXPECT_TRUE(view.hidden);
    expectRows(
        view,
        {{Kind::label, "", "Sessione terminata", {22, true}, plain, {{24, 380}, {392, 30}}},
         {Kind::wrappingLabel, "endMessageLabel", "", {13, false}, TextColor::secondaryLabel, {{24, 290}, {392, 80}}},
         {Kind::button, "newSessionButton", "Nuova sessione", {}, plain, {{24, 230}, {160, 32}}}});
    EXPECT_EQ(view.controls[2].action, "resetToJoin");
    EXPECT_EQ(view.controls[2].keyEquivalent, "");
}

TEST_F(FreshJoinScreenTest, ShowsTheDefaultServerAndEmptyFieldsToANewcomer) {
    launch();
    EXPECT_EQ(screen(), "joinView");
    EXPECT_EQ(text("serverUrlField"), defaultServerAddress);
    EXPECT_EQ(text("sessionCodeField"), "");
    EXPECT_EQ(text("fullNameField"), "");
    EXPECT_EQ(text("emailField"), "");
}

TEST_F(JoinScreenTest, IsFilledWithWhatWasSaved) {
    launch();
    EXPECT_EQ(text("serverUrlField"), server);
    EXPECT_EQ(text("sessionCodeField"), "");
    EXPECT_EQ(text("fullNameField"), "Ada Neri");
    EXPECT_EQ(text("emailField"), "ada@example.com");
    EXPECT_EQ(text("errorLabel"), "");
}

TEST_F(JoinScreenTest, CallsEachFieldByTheLabelAboveIt) {
    std::vector<std::pair<std::string, std::string>> names;
    const View join = JoinScreen::view({}, "");
    for (const Control& control : join.controls) {
        if (control.kind != Kind::textField) {
            EXPECT_EQ(control.accessibilityLabel, "") << control.text;
            continue;
        }
        names.emplace_back(control.id, control.accessibilityLabel);
        const auto label = std::find_if(join.controls.begin(), join.controls.end(),
                                        [&](const Control& other) { return other.text == control.accessibilityLabel; });
        ASSERT_NE(label, join.controls.end()) << control.id;
        EXPECT_GT(label->frame.origin.y, control.frame.origin.y) << control.id;
        EXPECT_LE(label->frame.origin.y, control.frame.origin.y + control.frame.size.height + 4) << control.id;
    }
    using testing::Pair;
    EXPECT_THAT(names,
                ElementsAre(Pair("serverUrlField", "Server Vantrel:"), Pair("sessionCodeField", "Codice sessione:"),
                            Pair("fullNameField", "Nome e cognome:"), Pair("emailField", "Email:")));
}

TEST_F(JoinScreenTest, TabGoesFromTheTopToTheBottom) {
    launch();
    EXPECT_THAT(mac().windows().front()->tabOrder(),
                ElementsAre("serverUrlField", "sessionCodeField", "fullNameField", "emailField", "joinButton"));
    const View join = JoinScreen::view({}, "");
    double above = join.controls.front().frame.origin.y + 1;
    for (const Control& control : join.controls) {
        EXPECT_LT(control.frame.origin.y, above) << control.text << control.id;
        above = control.frame.origin.y;
    }
}

TEST_F(JoinScreenTest, AScreenReaderIsToldEachStatus) {
    launch();
    EXPECT_THAT(mac().windows().announcements(), IsEmpty());
    participant().pressReturn();
    mac().runFor(0);
    EXPECT_THAT(mac().windows().announcements(), ElementsAre("⚠ Inserisci il codice sessione"));
    answer(std::string("GET ") + server + "/api/sessions/", NetworkAnswer::reply(404, "", 3));
    join("XXXXXX");
    mac().runFor(10);
    EXPECT_THAT(
        mac().windows().announcements(),
        ElementsAre("⚠ Inserisci il codice sessione", "⏳ Connessione al server...", "❌ Codice sessione non trovato"));
}

class EmptySettingsTest : public ClientTest {
  protected:
    static virtualmac::Options empty() {
        auto options = returningParticipant();
        options.settings = {{"vt_serverURL", ""}, {"vt_fullName", ""}, {"vt_email", ""}};
        return options;
    }
    EmptySettingsTest() : ClientTest(empty()) {}
};

TEST_F(EmptySettingsTest, LeaveTheServerFieldEmpty) {
    launch();
    EXPECT_EQ(text("serverUrlField"), "");
    EXPECT_EQ(text("fullNameField"), "");
    EXPECT_EQ(text("emailField"), "");
    participant().pressReturn();
    mac().runFor(0);
    EXPECT_EQ(text("errorLabel"), "⚠ Inserisci l'indirizzo del server Vantrel");
}

TEST_F(FreshJoinScreenTest, ReportsTheFirstEmptyFieldInOrder) {
    launch();
    fill("", "", "", "");
    EXPECT_EQ(text("errorLabel"), "⚠ Inserisci l'indirizzo del server Vantrel");
    fill(server, "", "", "");
    EXPECT_EQ(text("errorLabel"), "⚠ Inserisci il codice sessione");
    fill(server, "NQRP5D", "", "");
    EXPECT_EQ(text("errorLabel"), "⚠ Inserisci nome e cognome");
    fill(server, "NQRP5D", "Ada Neri", "");
    EXPECT_EQ(text("errorLabel"), "⚠ Inserisci l'email");
    EXPECT_TRUE(isEnabled("joinButton"));
    EXPECT_THAT(mac().defaults().values(), IsEmpty());
    EXPECT_THAT(bodies("/join"), IsEmpty());
}

TEST_F(FreshJoinScreenTest, CountsFieldsOfSpacesAsEmpty) {
    launch();
    fill(" \t ", "x", "x", "x");
    EXPECT_EQ(text("errorLabel"), "⚠ Inserisci l'indirizzo del server Vantrel");
    fill(server, "\u00A0\u3000", "x", "x");
    EXPECT_EQ(text("errorLabel"), "⚠ Inserisci il codice sessione");
}

TEST_F(FreshJoinScreenTest, KeepsLineBreaksInAField) {
    launch();
    fill(server, "\n", "Ada Neri", "ada@example.com");
    mac().runFor(1);
    // It is not empty, so it is sent; but a line break forms no URL.
    EXPECT_EQ(text("errorLabel"), "❌ URL non valido");
}

TEST_F(FreshJoinScreenTest, SavesWhatWasTypedTrimmedButNotTheCode) {
    launch();
    fill(std::string("  ") + server + "/ ", "\tnqrp5d ", " Ada Neri\t", " ada@example.com ");
    EXPECT_THAT(mac().defaults().values(),
                ElementsAre(testing::Pair("vt_email", "ada@example.com"), testing::Pair("vt_fullName", "Ada Neri"),
                            testing::Pair("vt_serverURL", std::string(server) + "/")));
    mac().runFor(5);
    EXPECT_THAT(
        bodies("/api/sessions/NQRP5D/join"),
        ElementsAre(
            R"({"clientVersion":"2.0-macOS","email":"ada@example.com","fullName":"Ada Neri","platform":"darwin"})"));
}

TEST_F(JoinScreenTest, ShowsTheProgressAndDisablesTheButtonWhileTheJoinRuns) {
    launch();
    answer(std::string("GET ") + server + "/api/sessions/", NetworkAnswer::reply(404, "", 3));
    join("XXXXXX");
    EXPECT_EQ(text("errorLabel"), "⏳ Connessione al server...");
    EXPECT_FALSE(isEnabled("joinButton"));
    mac().runFor(2);
    participant().pressReturn();
    mac().runFor(2);
    EXPECT_EQ(text("errorLabel"), "❌ Codice sessione non trovato");
    EXPECT_TRUE(isEnabled("joinButton"));
    EXPECT_EQ(text("sessionCodeField"), "XXXXXX");
    EXPECT_EQ(bodies("/api/sessions/XXXXXX").size(), 1u);
}

TEST_F(JoinScreenTest, JoinsAtTheAddressJustTyped) {
    launch();
    participant().type("serverUrlField", "https://other.example");
    join();
    mac().runFor(1);
    EXPECT_EQ(requests().back(), "GET https://other.example/api/sessions/NQRP5D");
}

TEST_F(JoinScreenTest, IsRefilledAfterAnEndWithTheCodeEmpty) {
    launch();
    enterLockdown();
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(10);
    ASSERT_EQ(screen(), "endView");
    participant().press("Nuova sessione");
    mac().runFor(0);
    EXPECT_EQ(screen(), "joinView");
    EXPECT_EQ(text("serverUrlField"), server);
    EXPECT_EQ(text("sessionCodeField"), "");
    EXPECT_EQ(text("fullNameField"), "Ada Neri");
    EXPECT_EQ(text("emailField"), "ada@example.com");
    EXPECT_EQ(text("errorLabel"), "");
    EXPECT_TRUE(isClosable());
    EXPECT_TRUE(isEnabled("joinButton"));
}

TEST_F(JoinScreenTest, KeepsTheNameAndTheEMailThoughWhatWasSavedIsEmptyByTheNextSession) {
    launch();
    enterLockdown();
    mac().defaults().put("vt_fullName", "");
    mac().defaults().put("vt_email", "");
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(10);
    participant().press("Nuova sessione");
    mac().runFor(0);
    EXPECT_EQ(text("fullNameField"), "Ada Neri");
    EXPECT_EQ(text("emailField"), "ada@example.com");
}

TEST_F(JoinScreenTest, OpensAWindowThatCannotBeResized) {
    launch();
    const auto window = mac().windows().front();
    ASSERT_TRUE(window);
    EXPECT_EQ(window->title, "Vantrel");
    EXPECT_EQ(window->contentRect, (Rect{{0, 0}, {440, 460}}));
    EXPECT_EQ(window->styleMask, 7u);
    EXPECT_TRUE(window->centered);
    EXPECT_TRUE(window->key);
}

}  // namespace
}  // namespace vantrel
