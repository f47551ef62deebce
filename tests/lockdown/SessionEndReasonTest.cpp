#include <gtest/gtest.h>

#include <string>

#include "lockdown/SessionEndReason.h"

namespace vantrel {
namespace {

TEST(SessionEndReason, HasItsMessagesInOrder) {
    ASSERT_EQ(allSessionEndReasons.size(), 5u);
    EXPECT_EQ(message(allSessionEndReasons[0]), "La finestra di Meet è stata chiusa");
    EXPECT_EQ(message(allSessionEndReasons[1]), "Browser minimizzato ripetutamente — sessione terminata");
    EXPECT_EQ(message(allSessionEndReasons[2]), "Browser chiuso per violazioni focus ripetute");
    EXPECT_EQ(message(allSessionEndReasons[3]), "Il browser si è chiuso inaspettatamente");
    EXPECT_EQ(message(allSessionEndReasons[4]), "Sessione terminata dall'utente");
    for (std::size_t index = 0; index < allSessionEndReasons.size(); ++index) {
        EXPECT_EQ(static_cast<std::size_t>(allSessionEndReasons[index]), index);
    }
}

TEST(SessionEndReason, IsFoundByItsExactMessageOnly) {
    for (const auto reason :
         {SessionEndReason::meetWindowClosed, SessionEndReason::browserKilledMinimize,
          SessionEndReason::browserKilledFocus, SessionEndReason::browserCrashed, SessionEndReason::userRequest}) {
        EXPECT_EQ(sessionEndReason(message(reason)), reason);
    }
    EXPECT_EQ(sessionEndReason("il browser si è chiuso inaspettatamente"), std::nullopt);
    EXPECT_EQ(sessionEndReason("Il browser si è chiuso inaspettatamente "), std::nullopt);
    EXPECT_EQ(sessionEndReason(""), std::nullopt);
}

}  // namespace
}  // namespace vantrel
