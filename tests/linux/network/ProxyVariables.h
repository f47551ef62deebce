#pragma once

#include <string>

namespace vantrel::linuxdesktop {

/// The environment variables for proxies, cleared by constructor and destructor. Use it only while no request is under
/// way.
class ProxyVariables {
  public:
    ProxyVariables() { clear(); }
    ~ProxyVariables() { clear(); }
    ProxyVariables(const ProxyVariables&) = delete;
    ProxyVariables& operator=(const ProxyVariables&) = delete;

    /// Also clears what would make the desktop's settings name the proxies.
    static void clear();

    void set(const std::string& name, const std::string& value);
};

}  // namespace vantrel::linuxdesktop
