#include "platform/portable/StandardError.h"

#include <unistd.h>

#include "platform/portable/Outlet.h"

namespace vantrel {

// Opened for each line: there are few, and a descriptor that is kept would belong to what standard error was before.
void sayOnStandardError(std::string_view line) {
    Outlet(STDERR_FILENO).write(line);
}

}  // namespace vantrel
