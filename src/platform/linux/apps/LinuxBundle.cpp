#include "platform/linux/apps/LinuxBundle.h"

#include "platform/linux/apps/ApplicationNames.h"

namespace vantrel::linuxdesktop {

std::optional<std::string> LinuxBundle::identifier() const {
    return std::string(ownBundleIdentifier);
}

}  // namespace vantrel::linuxdesktop
