#include "platform/linux/screenreader/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace vantrel::linuxdesktop {

namespace {

constexpr const char* roleProperty = "accessibleRole";

// Qt takes the interface over.
QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    const QVariant role = widget != nullptr ? widget->property(roleProperty) : QVariant();
    if (!role.isValid()) return nullptr;
    return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void presentAs(QWidget& widget, QAccessible::Role role) {
    // A second installation has no effect.
    QAccessible::installFactory(&makeInterface);
    widget.setProperty(roleProperty, static_cast<int>(role));
}

}  // namespace vantrel::linuxdesktop
