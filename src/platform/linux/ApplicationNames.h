#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantrel::linuxdesktop {

inline constexpr std::string_view ownBundleIdentifier = "biz.quorrin.vantrel";

/// What a program is called on macOS. Both texts are empty for one that is not in the table.
struct ApplicationName {
    std::string_view bundleIdentifier;
    std::string_view localizedName;
};

/// Finds a program by the path of its executable: by a folder `Name.app` in it, else by the file's name. Helper
/// processes of browsers, known by their arguments, are no applications.
ApplicationName applicationName(std::string_view executablePath, const std::vector<std::string>& arguments);

}  // namespace vantrel::linuxdesktop
