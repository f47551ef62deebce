#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <utility>

#include "rehearsal/playing/Player.h"

namespace vantrel::rehearsal {
namespace {

using testing::HasSubstr;
using testing::Not;

/// The transcript of the client with a join at 0.1 seconds on a Mac with these browsers.
class MacSettingsTest : public testing::Test {
  protected:
    void SetUp() override {
        scenario_.title = "T";
        scenario_.until = 30;
        scenario_.mac.settings = {{"vt_fullName", "Ada"}, {"vt_email", "a@b.it"}};
        scenario_.mac.browsers.emplace();
        scenario_.server.sessions.emplace_back().code = "AAA";
        scenario_.timeline = {{0.1, TypeTexts{{{"sessionCodeField", "AAA"}}}},
                              {0.1, PressButton{"Avvia sessione protetta"}}};
    }

    void begin(Action action) { scenario_.timeline.insert(scenario_.timeline.begin(), {0, std::move(action)}); }
    MacSetup& mac() { return scenario_.mac; }
    InstalledBrowser& browser(BrowserName name) { return (*scenario_.mac.browsers)[name]; }
    std::string played() {
        std::ostringstream stream;
        EXPECT_TRUE(play(scenario_, stream).clean);
        return stream.str();
    }

  private:
    Scenario scenario_;
};

TEST_F(MacSettingsTest, HaveABrowserThatCannotBeStarted) {
    browser(BrowserName::chrome).startFailure = "Rotto.";
    EXPECT_THAT(played(), HasSubstr("    0.200  log          [BROWSER] ❌ Errore lancio: Rotto.\n"));
}

TEST_F(MacSettingsTest, HaveABrowserInTheHomeFolderOnly) {
    browser(BrowserName::edge).isInHome = true;
    mac().home = "/Users/ada";
    EXPECT_THAT(
        played(),
        HasSubstr("process      /Users/ada/Applications/Microsoft Edge.app/Contents/MacOS/Microsoft Edge (501)"));
}

TEST_F(MacSettingsTest, HaveABrowserThatStartsLateWithALateWindow) {
    browser(BrowserName::chrome).appearsAfter = 2.5;
    browser(BrowserName::chrome).windowAfter = 4;
    const auto text = played();
    EXPECT_THAT(text, HasSubstr("    2.200  log          [BROWSER] Google Chrome PID (fallback): 501\n"));
    EXPECT_THAT(text, HasSubstr("    2.700  application  Google Chrome (501) starts\n"));
    EXPECT_THAT(text, HasSubstr("    4.200  app window   #1001 "));
}

TEST_F(MacSettingsTest, HaveABrowserThatEndsByItself) {
    browser(BrowserName::chrome).exitsAfter = 1;
    EXPECT_THAT(played(), HasSubstr("    1.200  application  Google Chrome (501) exits\n"));
}

TEST_F(MacSettingsTest, HaveABrowserThatForks) {
    browser(BrowserName::chrome).forks = true;
    EXPECT_THAT(played(), HasSubstr("    2.200  log          [BROWSER] Google Chrome PID (new): 502\n"));
}

TEST_F(MacSettingsTest, HaveASafariThatAnswersLate) {
    browser(BrowserName::safari).answerDelay = 5;
    EXPECT_THAT(played(), HasSubstr("    5.200  log          [BROWSER] Safari PID: 501\n"));
}

TEST_F(MacSettingsTest, HaveASafariThatTheSystemDoesNotName) {
    browser(BrowserName::safari).answersWithNothing = true;
    const auto text = played();
    EXPECT_THAT(text, HasSubstr("[BROWSER] Nuova finestra #1001"));
    EXPECT_THAT(text, Not(HasSubstr("[BROWSER] Safari PID")));
}

TEST_F(MacSettingsTest, HaveASafariThatCannotBeStarted) {
    browser(BrowserName::safari).startFailure = "Rotto.";
    EXPECT_THAT(played(), HasSubstr("    0.700  log          [BROWSER] ❌ Errore: Rotto.\n"));
}

TEST_F(MacSettingsTest, HaveASafariThatOpensNothingWhileOpeningFails) {
    begin(SetOpening{false});
    const auto text = played();
    EXPECT_THAT(text, HasSubstr("    0.700  log          [BROWSER] ❌ Errore: L’applicazione “Safari” non può essere "
                                "aperta.\n"));
    EXPECT_THAT(text, Not(HasSubstr("is started")));
}

TEST_F(MacSettingsTest, HaveASafariThatOpensAgain) {
    begin(SetOpening{true});
    begin(SetOpening{false});
    EXPECT_THAT(played(), HasSubstr("    0.700  log          [BROWSER] Safari PID: 501\n"));
}

TEST_F(MacSettingsTest, HaveNoSafari) {
    mac().safari = false;
    browser(BrowserName::firefox);
    const auto text = played();
    EXPECT_THAT(text, HasSubstr("    0.200  log          [BROWSER] Browser selezionato: Firefox\n"));
    EXPECT_THAT(text, HasSubstr("[BROWSER] ❌ Errore: L’applicazione “Safari” non può essere aperta.\n"));
}

}  // namespace
}  // namespace vantrel::rehearsal
