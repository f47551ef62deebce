#pragma once

#include <QAccessible>

class QWidget;

namespace vantrel::linuxdesktop {

/// Says to a screen reader what a widget is, where Qt would only know that it is a widget. Call it before the widget is
/// shown. Main thread.
void presentAs(QWidget& widget, QAccessible::Role role);

}  // namespace vantrel::linuxdesktop
