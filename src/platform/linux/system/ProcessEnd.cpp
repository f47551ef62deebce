#include "platform/linux/system/ProcessEnd.h"

#include <cstdio>
#include <cstdlib>

#include "platform/portable/UnreadLines.h"

namespace vantrel::linuxdesktop {

void endProcess() {
    UnreadLines::endAll();
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}

}  // namespace vantrel::linuxdesktop
