#pragma once

#include <string>

namespace vantrel::linuxdesktop {

/// The environment in which a user names proxies: empty to begin with and at the end. While no request is under way.
class ProxyVariables {
  public:
    ProxyVariables() { clear(); }
    ~ProxyVariables() { clear(); }
    ProxyVariables(const ProxyVariables&) = delete;
    ProxyVariables& operator=(const ProxyVariables&) = delete;

    /// Also what would have the proxies read from the desktop's settings.
    static void clear();

    void set(const std::string& name, const std::string& value);
};

}  // namespace vantrel::linuxdesktop
