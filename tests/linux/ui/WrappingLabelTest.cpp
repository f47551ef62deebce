#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QStringList>
#include <QWidget>
#include <algorithm>
#include <memory>
#include <string>

#include "platform/linux/ui/Appearance.h"
#include "platform/linux/ui/ControlWidget.h"
#include "platform/linux/ui/WrappingLabel.h"
#include "session/EndScreen.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/ui/Painting.h"

namespace vantrel::linuxdesktop {
namespace {

constexpr Font font{13, false};
// Much more than any text here needs.
constexpr int plenty = 4000;
const QString text =
    "La sessione è terminata perché la finestra di Meet è stata chiusa più volte: così il formatore non può più "
    "vederti. "
    "Avvia una nuova sessione, inserisci di nuovo il codice che hai ricevuto e rimani nella riunione finché non "
    "finisce.";
const QString longWord = "precipitevolissimevolmenteprecipitevolissimevolmenteprecipitevolissimevolmente";

/// The tests check what is painted.
class WrappingLabelTest : public DesktopTest {
  protected:
    static std::unique_ptr<WrappingLabel> makeLabel(const QString& text) {
        auto label = std::make_unique<WrappingLabel>();
        label->setFont(Appearance::font(font));
        label->setText(text);
        return label;
    }

    static QImage painted(const QString& text, int width, int height = plenty) {
        return linuxdesktop::painted(*makeLabel(text), {width, height});
    }

    static int lineHeight() { return makeLabel("Mg")->heightForWidth(plenty); }

    // The lines if each takes as many words as fit.
    static QStringList linesOfWords(const QString& text, int width) {
        const QFontMetricsF metrics(Appearance::font(font));
        QStringList lines{{}};
        for (const QString& word : text.split(' ')) {
            const QString longer = lines.back().isEmpty() ? word : lines.back() + ' ' + word;
            if (metrics.horizontalAdvance(longer) <= width) {
                lines.back() = longer;
            } else {
                lines.append(word);
            }
        }
        return lines;
    }

    // The lines one below the other, each painted separately.
    static QImage paintedOneByOne(const QStringList& lines, int width) {
        QImage image(width, plenty, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        int y = 0;
        for (const QString& line : lines) {
            painter.drawImage(0, y, painted(line, width, lineHeight()));
            y += lineHeight();
        }
        return image;
    }
};

TEST_F(WrappingLabelTest, BreaksALongTextBetweenWordsWhereTheLineIsFull) {
    for (const int width : {150, 260, 392}) {
        const QStringList lines = linesOfWords(text, width);
        ASSERT_GT(lines.size(), 3);
        EXPECT_EQ(painted(text, width), paintedOneByOne(lines, width)) << width;
        EXPECT_EQ(makeLabel(text)->heightForWidth(width), lines.size() * lineHeight()) << width;
    }
}

TEST_F(WrappingLabelTest, KeepsLineBreaksAlsoEmptyLines) {
    EXPECT_EQ(painted("Prima\nSeconda\n\nQuarta", 392), paintedOneByOne({"Prima", "Seconda", "", "Quarta"}, 392));
    EXPECT_EQ(makeLabel("Prima\nSeconda\n\nQuarta")->heightForWidth(392), 4 * lineHeight());
    EXPECT_EQ(painted("Prima\r\nSeconda", 392), paintedOneByOne({"Prima", "Seconda"}, 392));
    EXPECT_EQ(painted("\nSeconda", 392), paintedOneByOne({"", "Seconda"}, 392));
}

TEST_F(WrappingLabelTest, BreaksAWordThatIsLongerThanTheLineAndNoOther) {
    constexpr int width = 120;
    const QFontMetricsF metrics(Appearance::font(font));
    QStringList lines{"Codice"};
    QString rest = longWord;
    while (!rest.isEmpty()) {
        qsizetype fitting = 1;
        while (fitting < rest.size() && metrics.horizontalAdvance(rest.left(fitting + 1)) <= width) ++fitting;
        lines.append(rest.left(fitting));
        rest = rest.mid(fitting);
    }
    ASSERT_GT(lines.size(), 4);
    EXPECT_EQ(painted("Codice " + longWord, width), paintedOneByOne(lines, width));
    EXPECT_LE(makeLabel(longWord)->longestLine(width), width);
    EXPECT_GT(makeLabel(longWord)->longestLine(plenty), width);
}

TEST_F(WrappingLabelTest, NeedsTheHeightThatItPaintsAndNotMore) {
    // The font's own height counts too: an empty line below would be one too many.
    const int fontHeight = QFontMetrics(Appearance::font(font)).height();
    for (const QString& each : {text, longWord, QString("❌ Errore 🔒 del server"), QString("Àgj"), QString("a\nb"),
                                QString("🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒🔒")}) {
        int before = plenty;
        for (const int width : {60, 120, 250, 392, 1000}) {
            const int height = makeLabel(each)->heightForWidth(width);
            EXPECT_LE(height, before) << "a wider label is not taller: " << each.toStdString();
            before = height;
            const QRect whole = ink(painted(each, width));
            EXPECT_LT(whole.bottom(), height) << each.toStdString() << " at " << width;
            EXPECT_GT(whole.bottom(), height - fontHeight - 2) << each.toStdString() << " at " << width;
        }
    }
}

TEST_F(WrappingLabelTest, BeginsAtTheTopLeftHoweverLargeItIs) {
    const QRect small = ink(painted("Hg", 392, 80));
    EXPECT_LE(small.left(), 3);
    EXPECT_LT(small.bottom(), lineHeight());
    EXPECT_GT(small.height(), 8);
    EXPECT_EQ(ink(painted("Hg", 1000, 700)), small);
    EXPECT_LE(ink(painted(text, 392).copy(0, lineHeight(), 392, lineHeight())).left(), 3);
}

TEST_F(WrappingLabelTest, NeedsAndPaintsNothingWithoutAText) {
    EXPECT_EQ(makeLabel("")->heightForWidth(392), 0);
    EXPECT_TRUE(ink(painted("", 392)).isEmpty());
    auto label = makeLabel(text);
    EXPECT_FALSE(ink(linuxdesktop::painted(*label, {392, 80})).isEmpty());
    label->setText("");
    EXPECT_TRUE(ink(linuxdesktop::painted(*label, {392, 80})).isEmpty());
}

TEST_F(WrappingLabelTest, NeverBreaksAnEmojiIntoHalves) {
    const QString one = "🔒";
    const int width = makeLabel(one.repeated(5))->longestLine(plenty);
    const auto label = makeLabel(one.repeated(13));
    EXPECT_EQ(label->heightForWidth(width), 3 * makeLabel(one)->heightForWidth(plenty));
    const int height = makeLabel(one)->heightForWidth(plenty);
    const QImage all = linuxdesktop::painted(*label, {width, plenty});
    const QImage full = painted(one.repeated(5), width, height);
    EXPECT_EQ(all.copy(0, 0, width, height), full);
    EXPECT_EQ(all.copy(0, height, width, height), full);
    EXPECT_EQ(all.copy(0, 2 * height, width, height), painted(one.repeated(3), width, height));
}

TEST_F(WrappingLabelTest, PaintsMarkupAndAmpersandsAsTheyStand) {
    const QFontMetricsF metrics(Appearance::font(font));
    for (const QString& each : {QString("<b>Vantrel</b>"), QString("Carlo & Figli"), QString("&lt;")}) {
        EXPECT_NEAR(ink(painted(each, 392)).width(), metrics.horizontalAdvance(each), 4) << each.toStdString();
    }
}

/// The end screen's message as the window shows it.
class EndMessage : public WrappingLabelTest {
  protected:
    void SetUp() override {
        WrappingLabelTest::SetUp();
        const View view = EndScreen::view({{0, 0}, {440, 460}});
        const auto found = std::find_if(view.controls.begin(), view.controls.end(), [](const Control& control) {
            return control.kind == Control::Kind::wrappingLabel;
        });
        ASSERT_NE(found, view.controls.end());
        control = *found;
    }

    // The whole end screen with nothing on it but the message.
    QImage screen(const std::string& message) const {
        QWidget screen;
        ControlWidget widget(control, 460, &screen);
        widget.setText(message);
        return linuxdesktop::painted(screen, {440, 460});
    }

    Control control;
};

TEST_F(EndMessage, IsWholeForEveryReason) {
    const int descent = QFontMetrics(Appearance::font(control.font)).descent();
    for (const char* message :
         {"La finestra di Meet è stata chiusa", "Browser minimizzato ripetutamente — sessione terminata",
          "Browser chiuso per violazioni focus ripetute", "Il browser si è chiuso inaspettatamente",
          "Sessione terminata dall'utente"}) {
        const QRect frame(24, 460 - 290 - 80, 392, 80);
        const QRect drawn = ink(screen(message));
        EXPECT_TRUE(frame.contains(drawn)) << message;
        EXPECT_LT(drawn.top(), frame.top() + lineHeight()) << message;
        EXPECT_LT(drawn.bottom(), frame.bottom() - descent) << message;
        const QSize whole = ink(painted(message, 392)).size();
        EXPECT_EQ(drawn.size(), whole) << message;
    }
}

TEST_F(EndMessage, HasRoomForFourLinesAndShowsTheLastOfThem) {
    const QRect four = ink(screen("Hg\nHg\nHg\nHg"));
    const QRect three = ink(screen("Hg\nHg\nHg"));
    EXPECT_EQ(four.bottom() - three.bottom(), lineHeight());
    EXPECT_LT(four.bottom(), 460 - 290);
}

TEST_F(EndMessage, IsInTheSecondaryColourAndNoOther) {
    const QImage image = screen("Il browser si è chiuso inaspettatamente");
    int darkest = 255;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) darkest = std::min(darkest, qGray(image.pixel(x, y)));
    }
    EXPECT_NEAR(darkest, qGray(QColor(Appearance::colorName(TextColor::secondaryLabel)).rgb()), 8);
}

TEST_F(EndMessage, GivesWayToTheNextOne) {
    QWidget whole;
    ControlWidget widget(control, 460, &whole);
    EXPECT_TRUE(ink(linuxdesktop::painted(whole, {440, 460})).isEmpty());
    widget.setText("Sessione terminata dall'utente");
    EXPECT_EQ(widget.text(), "Sessione terminata dall'utente");
    EXPECT_EQ(linuxdesktop::painted(whole, {440, 460}), screen("Sessione terminata dall'utente"));
    widget.setText("");
    EXPECT_TRUE(ink(linuxdesktop::painted(whole, {440, 460})).isEmpty());
}

}  // namespace
}  // namespace vantrel::linuxdesktop
