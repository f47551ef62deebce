#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <cstdlib>

#include "platform/linux/ui/WrappingLabel.h"
#include "tests/linux/support/DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

class AlertsTest : public DesktopTest {
  protected:
    const Alert question{AlertStyle::warning, "Terminare?", "Una riga.\n\nUn'altra.", {"Termina", "Annulla"}};

    std::size_t answerWith(int key, const Alert& alert, Block whileShown = {}) {
        answerAlertLater(key, std::move(whileShown));
        return computer->alerts.runModal(alert);
    }

    static QString labelText(const char* name) { return alert()->findChild<QLabel*>(name)->text(); }
    static QPushButton* button(const char* name) { return alert()->findChild<QPushButton*>(name); }
};

TEST_F(AlertsTest, ShowsTextsAndButtonsToTheLetter) {
    answerWith(Qt::Key_Return, question, [] {
        EXPECT_EQ(alert()->windowTitle(), "Vantrel");
        EXPECT_EQ(labelText("messageText"), "Terminare?");
        EXPECT_EQ(labelText("informativeText"), "Una riga.\n\nUn'altra.");
        EXPECT_EQ(button("button0")->text(), "Termina");
        EXPECT_EQ(button("button1")->text(), "Annulla");
        EXPECT_EQ(button("button2"), nullptr);
        EXPECT_GT(button("button0")->x(), button("button1")->x());
        EXPECT_TRUE(button("button0")->hasFocus() || alert()->focusWidget() == button("button0"));
    });
}

TEST_F(AlertsTest, AnswersReturnWithTheFirstButtonWhereverTheFocusIs) {
    EXPECT_EQ(answerWith(Qt::Key_Return, question, [] { button("button1")->setFocus(); }), 0u);
    EXPECT_EQ(answerWith(Qt::Key_Enter, question), 0u);
}

TEST_F(AlertsTest, AnswersEscapeWithAnnullaOrElseTheLastOfSeveral) {
    EXPECT_EQ(answerWith(Qt::Key_Escape, question), 1u);
    EXPECT_EQ(answerWith(Qt::Key_Escape, {AlertStyle::warning, "x", "", {"Sì", "Annulla", "Più tardi"}}), 1u);
    EXPECT_EQ(answerWith(Qt::Key_Escape, {AlertStyle::warning, "x", "", {"Apri pagina download", "Più tardi"}}), 1u);
}

TEST_F(AlertsTest, StaysOnEscapeWithOneButtonOnly) {
    bool stayed = false;
    const auto result = answerWith(Qt::Key_Return, {AlertStyle::informational, "x", "", {}}, [&stayed] {
        EXPECT_EQ(button("button0")->text(), "OK");
        QTest::keyClick(alert(), Qt::Key_Escape);
        alert()->close();
        turnFor(0.1);
        stayed = alert() != nullptr;
    });
    EXPECT_TRUE(stayed);
    EXPECT_EQ(result, 0u);
}

TEST_F(AlertsTest, GoesThroughTheButtonsWithTabAndPressesTheFocusedOneWithSpace) {
    std::size_t result = 9;
    answerAlertLater(Qt::Key_Space, [] {
        QTest::keyClick(alert(), Qt::Key_Tab);
        EXPECT_EQ(alert()->focusWidget(), button("button1"));
        QTest::keyClick(button("button1"), Qt::Key_Space);
    });
    result = computer->alerts.runModal(question);
    EXPECT_EQ(result, 1u);
}

TEST_F(AlertsTest, TakesAmpersandsAndMarkupAsText) {
    answerWith(Qt::Key_Return, {AlertStyle::critical, "<b>A & B</b>", "&lt;", {"Sì & no"}}, [] {
        EXPECT_EQ(labelText("messageText"), "<b>A & B</b>");
        EXPECT_EQ(alert()->findChild<QLabel*>("messageText")->textFormat(), Qt::PlainText);
        EXPECT_EQ(button("button0")->text(), "Sì && no");
    });
}

TEST_F(AlertsTest, KeepsItsButtonsOnTheScreenWhateverTheTextsLength) {
    std::string text;
    for (int line = 0; line < 2000; ++line) text += "una riga di un messaggio del server\n";
    answerWith(Qt::Key_Return, {AlertStyle::warning, text, text, {"OK"}}, [] {
        constexpr int smallScreen = 768;
        EXPECT_LT(alert()->height(), smallScreen);
        EXPECT_TRUE(alert()->rect().contains(button("button0")->mapTo(alert(), QPoint(0, 0))));
    });
}

TEST_F(AlertsTest, BreaksAWordThatIsLongerThanALine) {
    const std::string address = "https://aula.example/" + std::string(150, 'w') + "/fine";
    answerWith(Qt::Key_Return, {AlertStyle::warning, address, "Apri " + address + " adesso.", {"OK"}}, [] {
        for (const char* name : {"messageText", "informativeText"}) {
            const auto* label = dynamic_cast<WrappingLabel*>(alert()->findChild<QLabel*>(name));
            ASSERT_TRUE(label);
            const QFontMetrics metrics = label->fontMetrics();
            EXPECT_GT(metrics.horizontalAdvance(label->text()), 2 * label->width());
            EXPECT_LE(label->longestLine(label->width()), label->width());
            const int lines = metrics.horizontalAdvance(label->text()) / label->width() + 1;
            EXPECT_GE(label->height(), lines * metrics.height());
        }
    });
}

TEST_F(AlertsTest, BreaksATextBetweenWordsWhereItCan) {
    WrappingLabel label;
    label.setText("parole brevi");
    const int lessThanBoth = label.fontMetrics().horizontalAdvance("parole brev");
    const int first = label.fontMetrics().horizontalAdvance("parole");
    EXPECT_LE(std::abs(label.longestLine(lessThanBoth) - first), 2);
    EXPECT_GE(label.heightForWidth(lessThanBoth), 2 * label.fontMetrics().height() - 2);
}

TEST_F(AlertsTest, ComesToTheFrontWithTheFocus) {
    bool active = false;
    answerAlertLater(Qt::Key_Return, [&active] { active = waitUntil([] { return alert()->isActiveWindow(); }); });
    computer->alerts.runModal(question);
    EXPECT_TRUE(active);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
