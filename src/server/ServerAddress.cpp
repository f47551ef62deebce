#include "server/ServerAddress.h"

namespace vantrel {

std::string serverBaseAddress(const UserDefaults& defaults) {
    return withoutTrailingSlash(defaults.string(serverURLKey).value_or(std::string(defaultServerAddress)));
}

std::string withoutTrailingSlash(std::string_view address) {
    if (address.ends_with('/')) address.remove_suffix(1);
    return std::string(address);
}

}  // namespace vantrel
