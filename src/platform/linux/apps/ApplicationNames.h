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

inline constexpr ApplicationName ownApplicationName{ownBundleIdentifier, "Vantrel"};

/// Finds a program by the path of its executable: by a folder `Name.app` in it, else by the file's name. Helper
/// processes of browsers are no applications.
ApplicationName applicationName(std::string_view executablePath, const std::vector<std::string>& arguments);

/// Finds a browser by the class of its windows (WM_CLASS), where its executable tells nothing: it may run from another
/// file name, in a container or under an interpreter.
ApplicationName applicationNameOfClass(std::string_view windowClass);

/// Whether these are the arguments of a process that a browser starts beside its own: a renderer and the like.
bool isHelperProcess(const std::vector<std::string>& arguments);

}  // namespace vantrel::linuxdesktop
