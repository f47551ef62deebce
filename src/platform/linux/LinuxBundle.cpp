#include "platform/linux/LinuxBundle.h"

#include "platform/linux/ApplicationNames.h"

namespace vantrel::linuxdesktop {

std::optional<std::string> LinuxBundle::identifier() const {
    return std::string(ownBundleIdentifier);
}

}  // namespace vantrel::linuxdesktop
