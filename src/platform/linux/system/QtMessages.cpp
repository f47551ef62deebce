#include "platform/linux/system/QtMessages.h"

#include <QString>

#include "platform/portable/StandardError.h"

namespace vantrel::linuxdesktop {

void sayQtMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
    sayOnStandardError(message.toStdString() + "\n");
}

}  // namespace vantrel::linuxdesktop
