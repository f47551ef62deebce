#include "platform/linux/DetachedProcess.h"

#include "platform/linux/ReapedProcess.h"

namespace vantrel::linuxdesktop {

bool startDetached(const std::vector<std::string>& arguments) {
    return startReaped(arguments.front(), arguments, ExecutableLookup::alongPath).error == 0;
}

}  // namespace vantrel::linuxdesktop
