#include <gmock/gmock.h>

#include "tests/session/ClientTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class AccessibilityTest : public ClientTest {
  protected:
    void joinUntrusted() {
        mac().trust().setTrusted(false);
        mac().capture().setStatus(MediaType::audio, AuthorizationStatus::notDetermined);
        mac().capture().setStatus(MediaType::video, AuthorizationStatus::notDetermined);
        launch();
        join();
        mac().runFor(5);
        ASSERT_EQ(mac().alerts().up().size(), 1u);
    }
};

TEST_F(AccessibilityTest, IsExplainedByACriticalAlert) {
    joinUntrusted();
    const auto alert = mac().alerts().up().front();
    EXPECT_EQ(alert.style, AlertStyle::critical);
    EXPECT_EQ(alert.messageText, "Permesso Accessibilità richiesto");
    EXPECT_EQ(
        alert.informativeText,
        "Vantrel ha bisogno del permesso Accessibilità per controllare la finestra del browser durante la sessione "
        "protetta.\n\nCome abilitarlo:\n\n1. Clicca \"Apri Impostazioni di Sistema\" qui sotto\n2. Nella lista "
        "cerca \"Vantrel\"\n3. Attiva il toggle accanto a Vantrel\n4. Se Vantrel non è nella lista, clicca \"+\" e "
        "aggiungilo manualmente\n5. Chiudi le Impostazioni e riprova ad avviare la sessione\n\n⚠️ Senza questo "
        "permesso la sessione protetta non può essere avviata.");
    EXPECT_THAT(alert.buttons, ElementsAre("Apri Impostazioni di Sistema", "Annulla"));
    EXPECT_EQ(mac().trust().prompts(), 0);
}

TEST_F(AccessibilityTest, RefusesQuittingWhileItsAlertIsUp) {
    joinUntrusted();
    participant().logOut();
    mac().runFor(1);
    EXPECT_TRUE(mac().isRunning());
    EXPECT_THAT(texts(ClientEvent::terminateRefused), testing::SizeIs(1));
}

TEST_F(AccessibilityTest, OpensThePaneWhenAsked) {
    joinUntrusted();
    participant().answerAlert("Apri Impostazioni di Sistema");
    mac().runFor(5);
    EXPECT_THAT(mac().workspace().opened(),
                ElementsAre("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));
}

TEST_F(AccessibilityTest, OpensNothingWhereThePaneHasNoAddress) {
    mac().urls().failFormingWhere([](std::string_view text) { return text.starts_with("x-apple"); });
    joinUntrusted();
    participant().answerAlert("Apri Impostazioni di Sistema");
    mac().runFor(5);
    EXPECT_THAT(mac().workspace().opened(), IsEmpty());
    EXPECT_EQ(screen(), "joinView");
}

TEST_F(AccessibilityTest, LeavesTheJoinScreenUsableAfterARefusal) {
    joinUntrusted();
    forgetEvents();
    participant().answerAlert("Annulla");
    mac().runFor(60);
    EXPECT_THAT(mac().workspace().opened(), IsEmpty());
    EXPECT_EQ(screen(), "joinView");
    EXPECT_TRUE(isClosable());
    EXPECT_TRUE(isEnabled("joinButton"));
    EXPECT_EQ(text("errorLabel"), "");
    EXPECT_THAT(logLines(), IsEmpty());
    EXPECT_EQ(mac().capture().prompts(), 0u);
    EXPECT_THAT(bodies("/api/heartbeat"), IsEmpty());
    expectNothingLeft();
    participant().pressCommand("q");
    mac().runFor(1);
    EXPECT_FALSE(mac().isRunning());
}

TEST_F(AccessibilityTest, LetsTheNextPressThroughOnceItIsGranted) {
    joinUntrusted();
    participant().answerAlert("Annulla");
    mac().runFor(30);
    mac().trust().setTrusted(true);
    mac().runFor(30);
    EXPECT_EQ(screen(), "joinView");
    mac().capture().setStatus(MediaType::audio, AuthorizationStatus::authorized);
    mac().capture().setStatus(MediaType::video, AuthorizationStatus::authorized);
    enterLockdown();
}

TEST_F(AccessibilityTest, LeavesNoShorterTimeoutForAnApplicationThatHangsAfterARefusal) {
    joinUntrusted();
    participant().answerAlert("Annulla");
    mac().runFor(5);
    mac().trust().setTrusted(true);
    EXPECT_DOUBLE_EQ(timeOfAReadThatHangs(), accessibilityTimeout);
}

class CaptureTest : public ClientTest {};

TEST_F(CaptureTest, AsksForTheMicrophoneFirstAndGoesOnWhenBothAreDecided) {
    mac().capture().setStatus(MediaType::audio, AuthorizationStatus::notDetermined);
    mac().capture().setStatus(MediaType::video, AuthorizationStatus::notDetermined);
    launch();
    join();
    mac().runFor(60);
    EXPECT_THAT(texts(PermissionEvent::requested), ElementsAre("microphone", "camera"));
    EXPECT_THAT(logLines(), Not(Contains("✅ Step 1/4: Fullscreen completato")));
    participant().answerPermissionPrompt(true);
    mac().runFor(60);
    EXPECT_EQ(logLines().back(), "[TCC] Microfono: ✅ concesso");
    participant().answerPermissionPrompt(false);
    mac().runFor(10);
    EXPECT_THAT(logLines(), Contains("[TCC] Camera: ⚠️ negata"));
    EXPECT_EQ(screen(), "none");
}

TEST_F(CaptureTest, GoesOnWithWhatWasRefused) {
    mac().capture().setStatus(MediaType::audio, AuthorizationStatus::notDetermined);
    mac().capture().setStatus(MediaType::video, AuthorizationStatus::notDetermined);
    mac().capture().answerAutomatically(MediaType::audio, false, 1);
    mac().capture().answerAutomatically(MediaType::video, true, 1);
    launch();
    enterLockdown();
    EXPECT_THAT(logLines(), Contains("[TCC] Microfono: ⚠️ negato"));
    EXPECT_THAT(logLines(), Contains("[TCC] Camera: ✅ concessa"));
}

TEST_F(CaptureTest, LogsTheStatusOfWhatWasDecidedBefore) {
    mac().capture().setStatus(MediaType::audio, AuthorizationStatus::restricted);
    mac().capture().setStatus(MediaType::video, AuthorizationStatus::denied);
    launch();
    enterLockdown();
    EXPECT_THAT(logLines(), Contains("[TCC] Microfono: stato già definito (1)"));
    EXPECT_THAT(logLines(), Contains("[TCC] Camera: stato già definito (2)"));
    EXPECT_THAT(texts(PermissionEvent::requested), IsEmpty());
}

}  // namespace
}  // namespace vantrel
