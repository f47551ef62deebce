#pragma once

#include <QPixmap>

#include "platform/ui/Alerts.h"

namespace vantrel::linuxdesktop {

/// The client's own sign, with a caution triangle for what is critical, as the system's alerts show them.
QPixmap alertIcon(AlertStyle style, int size);

/// The client's sign: a lock.
QPixmap applicationIcon(int size);

}  // namespace vantrel::linuxdesktop
