#include <gmock/gmock.h>

#include "session/StatusMenu.h"
#include "tests/session/ClientTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;

class StatusMenuTest : public ClientTest {};

TEST_F(StatusMenuTest, NamesTheSessionAndOffersItsEnd) {
    launch();
    enterLockdown();
    const auto items = mac().statusBar().items();
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].title, "🔒 Vantrel");
    const auto& menu = items[0].menu.items;
    ASSERT_EQ(menu.size(), 3u);
    EXPECT_EQ(menu[0].title, "Titolo [NQRP5D]");
    EXPECT_FALSE(menu[0].enabled);
    EXPECT_EQ(menu[0].action, "");
    EXPECT_EQ(menu[1].kind, MenuItem::Kind::separator);
    EXPECT_EQ(menu[2].title, "Termina sessione");
    EXPECT_EQ(menu[2].action, "menuEndSession");
    EXPECT_TRUE(menu[2].enabled);
    for (const auto& item : menu) EXPECT_EQ(item.keyEquivalent, "");
}

TEST(StatusMenu, KeepsItsFormWithAnEmptyTitle) {
    const auto menu = statusMenu("", "NQRP5D", {});
    EXPECT_EQ(menu.title, "");
    EXPECT_EQ(menu.items.front().title, " [NQRP5D]");
}

TEST_F(StatusMenuTest, AsksBeforeItEndsTheSession) {
    launch();
    enterLockdown();
    askToEnd();
    const auto alert = mac().alerts().up().front();
    EXPECT_EQ(alert.style, AlertStyle::warning);
    EXPECT_EQ(alert.informativeText, "La sessione verrà registrata come terminata manualmente.");
    EXPECT_THAT(alert.buttons, ElementsAre("Termina", "Annulla"));
}

TEST_F(StatusMenuTest, ChangesNothingOnAnnulla) {
    launch();
    enterLockdown();
    askToEnd();
    forgetEvents();
    const auto before = bodies("/api/heartbeat").size();
    participant().answerAlert("Annulla");
    mac().runFor(30);
    EXPECT_TRUE(logLines().empty());
    EXPECT_EQ(screen(), "none");
    EXPECT_EQ(mac().statusBar().items().size(), 1u);
    EXPECT_EQ(bodies("/api/heartbeat").size(), before + 2);
}

TEST_F(StatusMenuTest, HoldsBackTheHeartbeatWhileTheQuestionIsUpAndSendsOneAfterwards) {
    launch();
    enterLockdown();
    askToEnd();
    const auto before = bodies("/api/heartbeat").size();
    mac().runFor(60);
    EXPECT_EQ(bodies("/api/heartbeat").size(), before);
    participant().answerAlert("Annulla");
    mac().runFor(0);
    EXPECT_EQ(bodies("/api/heartbeat").size(), before + 1);
}

TEST_F(StatusMenuTest, IsMadeAnewForTheNextSession) {
    launch();
    enterLockdown();
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(10);
    EXPECT_TRUE(mac().statusBar().items().empty());
    participant().press("Nuova sessione");
    mac().runFor(0);
    enterLockdown();
    EXPECT_EQ(mac().statusBar().items().size(), 1u);
}

}  // namespace
}  // namespace vantrel
