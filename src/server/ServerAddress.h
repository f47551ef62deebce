#pragma once

#include <string>
#include <string_view>

#include "platform/system/UserDefaults.h"

namespace vantrel {

/// Where the server is when nobody has said otherwise: the placeholder and the first value of the server field.
inline constexpr std::string_view defaultServerAddress = "https://server.vantrel.example";

/// The user default that holds the server address as typed.
inline constexpr std::string_view serverURLKey = "vt_serverURL";

/// The saved server address or the default one, one trailing slash removed. Not validated: a bad address shows when it
/// is used.
std::string serverBaseAddress(const UserDefaults& defaults);

/// The text with one trailing slash removed, if it has any.
std::string withoutTrailingSlash(std::string_view address);

}  // namespace vantrel
