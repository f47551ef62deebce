#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantrel::linuxdesktop {

inline constexpr std::string_view ownBundleIdentifier = "biz.quorrin.vantrel";

/// A program's name and bundle identifier on macOS. Both are empty for a program that is not in the table.
struct ApplicationName {
    std::string_view bundleIdentifier;
    std::string_view localizedName;
};

inline constexpr ApplicationName ownApplicationName{ownBundleIdentifier, "Vantrel"};

/// Finds a program by the path of its executable: by a folder `Name.app` in it, or else by the file's name. A browser's
/// helper processes are not applications.
ApplicationName applicationName(std::string_view executablePath, const std::vector<std::string>& arguments);

/// Finds a browser by the class of its windows (WM_CLASS). Needed where the executable says nothing: the browser may
/// run under another file name, in a container or in an interpreter.
ApplicationName applicationNameOfClass(std::string_view windowClass);

/// Whether these are the arguments of a browser's helper process: a renderer and the like.
bool isHelperProcess(const std::vector<std::string>& arguments);

}  // namespace vantrel::linuxdesktop
