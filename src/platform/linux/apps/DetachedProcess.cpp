#include "platform/linux/apps/DetachedProcess.h"

#include "platform/linux/apps/ReapedProcess.h"

namespace vantrel::linuxdesktop {

bool startDetached(const std::vector<std::string>& arguments) {
    return startReaped(arguments.front(), arguments, ExecutableLookup::alongPath).error == 0;
}

}  // namespace vantrel::linuxdesktop
