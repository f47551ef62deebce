#include "tests/linux/network/ProxyVariables.h"

#include <cstdlib>

namespace vantrel::linuxdesktop {

void ProxyVariables::clear() {
    for (const char* name :
         {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY", "no_proxy", "NO_PROXY",
          "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "GNOME_DESKTOP_SESSION_ID", "KDE_FULL_SESSION"}) {
        unsetenv(name);
    }
}

void ProxyVariables::set(const std::string& name, const std::string& value) {
    setenv(name.c_str(), value.c_str(), 1);
}

}  // namespace vantrel::linuxdesktop
