#pragma once

#include <QtGlobal>

namespace vantrel::linuxdesktop {

/// Says what Qt has to say on standard error, which holds nobody up. Qt calls it on any thread.
void sayQtMessage(QtMsgType, const QMessageLogContext&, const QString& message);

}  // namespace vantrel::linuxdesktop
