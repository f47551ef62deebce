#pragma once

#include <QPixmap>

#include "platform/ui/Alerts.h"

namespace vantrel::linuxdesktop {

/// The client's icon, with a caution triangle for critical alerts, as in the system's alerts.
QPixmap alertIcon(AlertStyle style, int size);

/// The client's icon: a lock.
QPixmap applicationIcon(int size);

}  // namespace vantrel::linuxdesktop
