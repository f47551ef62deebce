#pragma once

#include <QFont>
#include <QString>
#include <string_view>

#include "platform/ui/Window.h"

class QApplication;

namespace vantrel::linuxdesktop {

/// How the client looks: one light appearance, whatever the desktop's theme, so that pictures and judgements agree.
class Appearance {
  public:
    static void apply(QApplication& application);

    /// A system font; size 0 is that of controls.
    static QFont font(const Font& font);
    static QString colorName(TextColor color);

    static constexpr int menuBarHeight = 26;
};

/// UTF-8 to Qt; what is no UTF-8 becomes replacement characters.
QString qtText(std::string_view text);

/// For showing: no more than `longest` characters of it, so that a server's text of any size can be laid out.
QString shownText(const QString& text, int longest);

}  // namespace vantrel::linuxdesktop
