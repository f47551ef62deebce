#pragma once

#include <string>
#include <string_view>

#include "platform/system/UserDefaults.h"

namespace vantrel {

/// The server's address by default: the placeholder and the first value of the server field.
inline constexpr std::string_view defaultServerAddress = "https://server.vantrel.example";

/// The user default with the server address as typed.
inline constexpr std::string_view serverURLKey = "vt_serverURL";

/// The saved or else the default server address, without one trailing slash. Not validated: a bad address fails when it
/// is used.
std::string serverBaseAddress(const UserDefaults& defaults);

/// The text without one trailing slash, if it has one.
std::string withoutTrailingSlash(std::string_view address);

}  // namespace vantrel
