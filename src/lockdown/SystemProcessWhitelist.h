#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace vantrel {

/// Names or bundle identifiers of applications that may come to the front without a violation.
inline constexpr std::array<std::string_view, 17> systemProcessWhitelist = {"loginwindow",
                                                                            "WindowServer",
                                                                            "Dock",
                                                                            "SystemUIServer",
                                                                            "NotificationCenter",
                                                                            "ControlCenter",
                                                                            "Spotlight",
                                                                            "universalaccessd",
                                                                            "CoreLocationAgent",
                                                                            "UserNotificationCenter",
                                                                            "Vantrel",
                                                                            "Sophos Home",
                                                                            "SophosUI",
                                                                            "Windows App",
                                                                            "Creative Cloud",
                                                                            "AdobeIPCBroker",
                                                                            "AGSService"};

constexpr bool isWhitelisted(std::string_view nameOrIdentifier) {
    return std::find(systemProcessWhitelist.begin(), systemProcessWhitelist.end(), nameOrIdentifier) !=
           systemProcessWhitelist.end();
}

}  // namespace vantrel
