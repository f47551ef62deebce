#pragma once

#include <dispatch/dispatch.h>

namespace vantrel::macos {

/// `seconds` of uptime from now, rounded up. Any thread.
dispatch_time_t timeFromNow(double seconds);

}  // namespace vantrel::macos
