#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantrel::linuxdesktop {

/// A browser that the system has installed, seen as the application that it would be on macOS.
struct InstalledBrowser {
    /// Where the executable would lie: "/Applications/Name.app/Contents/MacOS/Name".
    std::string executable;
    /// What is started in its place.
    std::string program;
};

/// The browser that stands for the folder "/Applications/Name.app" or for the executable in it: the first of its
/// commands in a folder of PATH, or where Google Chrome installs itself. Relative folders of PATH do not count: what
/// lies there depends on where the client was started. Empty if no such command is installed, and if the executable
/// exists in /Applications or in the user's Applications, which come first.
///
/// Nothing is remembered, so a browser counts from the moment that it is installed. Any thread.
std::optional<InstalledBrowser> installedBrowser(std::string_view path);

}  // namespace vantrel::linuxdesktop
