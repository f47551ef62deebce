#include "platform/linux/ui/Appearance.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QStyleFactory>
#include <cmath>

namespace vantrel::linuxdesktop {

namespace {

constexpr int controlFontSize = 13;

constexpr auto styleSheet = R"(
QWidget#window, QDialog { background: #ececec; }
QMenuBar { background: #f6f6f6; border-bottom: 1px solid #d4d4d4; padding: 0 8px; }
QMenuBar::item { padding: 5px 9px; border-radius: 4px; background: transparent; color: #1d1d1f; }
QMenuBar::item:selected, QMenuBar::item:pressed { background: #dcdcde; }
QMenu { background: #f8f8f8; border: 1px solid #c6c6c8; padding: 5px; color: #1d1d1f; }
QMenu::item { padding: 4px 26px 4px 14px; border-radius: 4px; }
QMenu::item:selected:enabled { background: #0a6cff; color: white; }
QMenu::item:disabled { color: #6e6e73; }
QMenu::separator { height: 1px; background: #d9d9db; margin: 5px 9px; }
QLineEdit { background: white; border: 1px solid #c9c9cc; border-radius: 5px; padding: 0 6px;
            selection-background-color: #b3d7ff; selection-color: #1d1d1f; }
QLineEdit:focus { border: 2px solid #0a6cff; padding: 0 5px; }
QLineEdit:disabled { background: #f3f3f3; color: #6b6b70; }
QPushButton { background: white; color: #1d1d1f; border: 1px solid #c4c4c7; border-radius: 6px; padding: 0 14px;
              outline: none; }
QPushButton:pressed { background: #e2e2e4; }
QPushButton:focus { border: 2px solid #0a6cff; padding: 0 13px; }
QPushButton:disabled { background: #f1f1f2; color: #6b6b70; border: 1px solid #d8d8da; }
QPushButton[prominent="true"] { background: #0a6cff; color: white; border: 1px solid #005ce0; }
QPushButton[prominent="true"]:pressed { background: #0057d1; }
QPushButton[prominent="true"]:focus { border: 2px solid #00286b; }
QPushButton[prominent="true"]:disabled { background: #dcdcdf; color: #5d5d63; border: 1px solid #cfcfd2; }
QFrame#separator { background: #d2d2d4; border: none; }
QScrollArea, QScrollArea > QWidget > QWidget { background: transparent; border: none; }
)";

}  // namespace

void Appearance::apply(QApplication& application) {
    application.setStyle(QStyleFactory::create("Fusion"));
    QPalette palette;
    palette.setColor(QPalette::Window, QColor("#ececec"));
    palette.setColor(QPalette::WindowText, QColor("#1d1d1f"));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, QColor("#1d1d1f"));
    palette.setColor(QPalette::Button, QColor("#f4f4f4"));
    palette.setColor(QPalette::ButtonText, QColor("#1d1d1f"));
    palette.setColor(QPalette::Highlight, QColor("#b3d7ff"));
    palette.setColor(QPalette::HighlightedText, QColor("#1d1d1f"));
    palette.setColor(QPalette::PlaceholderText, QColor("#6f6f74"));
    application.setPalette(palette);
    application.setFont(font({}));
    application.setStyleSheet(styleSheet);
}

QFont Appearance::font(const Font& font) {
    static const bool interInstalled = QFontDatabase::families().contains("Inter");
    QFont made(interInstalled ? "Inter" : "sans-serif");
    made.setPixelSize(font.size > 0 ? static_cast<int>(std::lround(font.size)) : controlFontSize);
    made.setWeight(font.bold ? QFont::Bold : QFont::Normal);
    made.setHintingPreference(QFont::PreferNoHinting);
    return made;
}

QString Appearance::colorName(TextColor color) {
    switch (color) {
        case TextColor::secondaryLabel:
            return "#5f5f64";
        case TextColor::tertiaryLabel:
            return "#68686d";
        case TextColor::systemRed:
            return "#d70015";
        case TextColor::standard:
            break;
    }
    return "#1d1d1f";
}

int pixels(double points) {
    return static_cast<int>(std::lround(points));
}

QString qtText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString shownText(const QString& text, int longest) {
    if (text.size() <= longest) return text;
    const bool splitsPair = text.at(longest - 1).isHighSurrogate();
    return text.left(splitsPair ? longest - 1 : longest) + QChar(0x2026);
}

}  // namespace vantrel::linuxdesktop
