#pragma once

#include <QFont>
#include <QString>
#include <string_view>

#include "platform/ui/Window.h"

class QApplication;

namespace vantrel::linuxdesktop {

/// How the client looks: one light appearance, whatever the desktop's theme, so that pictures can be compared.
class Appearance {
  public:
    static void apply(QApplication& application);

    /// A system font. Size 0 is the size of controls.
    static QFont font(const Font& font);
    static QString colorName(TextColor color);

    static constexpr int menuBarHeight = 26;
};

/// From points of the interface to pixels of the screen. One point is one pixel here.
int pixels(double points);

/// UTF-8 to Qt. Invalid bytes become replacement characters.
QString qtText(std::string_view text);

/// At most `longest` characters of a text to be shown, so that a server's text of any size can be laid out.
QString shownText(const QString& text, int longest);

}  // namespace vantrel::linuxdesktop
