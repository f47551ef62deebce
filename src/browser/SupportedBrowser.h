#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/system/FileManager.h"

namespace vantrel {

/// The browsers that the client can control.
enum class SupportedBrowser { chrome, firefox, edge, safari };

inline constexpr std::array allSupportedBrowsers = {SupportedBrowser::chrome, SupportedBrowser::firefox,
                                                    SupportedBrowser::edge, SupportedBrowser::safari};

/// The order of choice if several are installed. Safari comes before Firefox on purpose: a meeting meant for Firefox
/// still opens in Safari.
inline constexpr std::array browserDetectionOrder = {SupportedBrowser::chrome, SupportedBrowser::edge,
                                                     SupportedBrowser::safari, SupportedBrowser::firefox};

/// The bundle identifier.
std::string_view rawValue(SupportedBrowser browser);
/// The browser with exactly that bundle identifier; empty for any other text.
std::optional<SupportedBrowser> supportedBrowser(std::string_view rawValue);

/// The name in log lines and in the owner names of windows.
std::string_view displayName(SupportedBrowser browser);

/// The possible paths of its executable, in the order in which they are tried. The home folder is read on each call.
std::vector<std::string> executableCandidates(SupportedBrowser browser, const FileManager& files);

/// The arguments that open the meeting in a bare window. Empty for browsers that are not started by their executable.
std::vector<std::string> launchArguments(SupportedBrowser browser, const std::string& meetURL);

/// The first browser in detection order with a candidate path that exists, whatever is there. Otherwise Safari, because
/// it is part of the system. Any thread.
SupportedBrowser detectSupportedBrowser(const FileManager& files);

}  // namespace vantrel
