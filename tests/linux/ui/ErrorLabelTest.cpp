#include <QFontMetrics>
#include <QWidget>
#include <algorithm>
#include <string>

#include "platform/linux/ui/Appearance.h"
#include "platform/linux/ui/ControlWidget.h"
#include "session/JoinScreen.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/ui/Painting.h"

namespace vantrel::linuxdesktop {
namespace {

constexpr QRect frame(24, 460 - 122 - 18, 392, 18);

/// The join screen's line for errors and progress. The tests check what the window paints.
class ErrorLabel : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        const View view = JoinScreen::view({{0, 0}, {440, 460}}, "2.0");
        const auto found = std::find_if(view.controls.begin(), view.controls.end(),
                                        [](const Control& control) { return control.id == JoinScreen::errorLabel; });
        ASSERT_NE(found, view.controls.end());
        control = *found;
    }

    // The whole join screen with nothing on it but the line.
    QImage screen(const std::string& text) const { return screen(text, control.frame.size); }

    QImage screen(const std::string& text, const Size& size) const {
        Control sized = control;
        sized.frame.size = size;
        QWidget screen;
        ControlWidget widget(sized, 460, &screen);
        widget.setText(text);
        return painted(screen, {2000, 600});
    }

    // The size of the text if there were room for all of it.
    QSize whole(const std::string& text) const { return ink(screen(text, {1900, 100})).size(); }

    Control control;
};

TEST_F(ErrorLabel, HasRoomForEveryTextOfTheClientsOwn) {
    for (const char* text :
         {"⚠ Inserisci l'indirizzo del server Vantrel", "⚠ Inserisci il codice sessione", "⚠ Inserisci nome e cognome",
          "⚠ Inserisci l'email", "⏳ Connessione al server...", "❌ Codice sessione non trovato",
          "❌ Questa sessione è già terminata", "❌ Errore serializzazione", "❌ Nessuna risposta dal server",
          "❌ Risposta server non valida", "❌ Errore server (HTTP 503)",
          "❌ Versione Vantrel non più supportata. Scarica la nuova versione."}) {
        const QRect drawn = ink(screen(text));
        EXPECT_EQ(drawn.size(), whole(text)) << text;
        EXPECT_TRUE(frame.contains(drawn)) << text;
        EXPECT_LE(drawn.left(), frame.left() + 3) << text;
    }
}

TEST_F(ErrorLabel, CutsNothingOffAboveOrBelow) {
    const std::string tall = "ÀÉÎÕÜ (gjpqy) 🔒 ❌ Ç_|";
    const QRect drawn = ink(screen(tall));
    EXPECT_EQ(drawn.height(), whole(tall).height());
    EXPECT_GT(drawn.height(), QFontMetrics(Appearance::font(control.font)).ascent());
    EXPECT_TRUE(frame.contains(drawn));
}

TEST_F(ErrorLabel, StaysOnItsLineAndEndsInAnEllipsisWhenTheTextIsLonger) {
    const std::string longest =
        "❌ Errore di rete: Si è verificato un errore SSL, impossibile stabilire una connessione protetta al server.";
    const QRect drawn = ink(screen(longest));
    EXPECT_TRUE(frame.contains(drawn));
    EXPECT_GT(drawn.width(), frame.width() - 20);
    EXPECT_EQ(drawn.height(), ink(screen(longest, {1900, 18})).height());
    // The dots are low: there is nothing above them at the end of the line.
    const QRect end = ink(screen(longest).copy(drawn.right() - 6, frame.top(), 7, frame.height()));
    EXPECT_LE(end.height(), 3);
    EXPECT_GT(end.top(), frame.height() / 2);
    EXPECT_EQ(screen("Prima\nseconda"), screen("Prima seconda"));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
