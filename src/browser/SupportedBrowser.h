#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/system/FileManager.h"

namespace vantrel {

/// The browsers that the client knows how to drive.
enum class SupportedBrowser { chrome, firefox, edge, safari };

inline constexpr std::array allSupportedBrowsers = {SupportedBrowser::chrome, SupportedBrowser::firefox,
                                                    SupportedBrowser::edge, SupportedBrowser::safari};

/// Which one is taken where several are installed. Safari goes before Firefox on purpose: a meeting that Firefox was
/// picked for is opened in Safari all the same.
inline constexpr std::array browserDetectionOrder = {SupportedBrowser::chrome, SupportedBrowser::edge,
                                                     SupportedBrowser::safari, SupportedBrowser::firefox};

/// The bundle identifier.
std::string_view rawValue(SupportedBrowser browser);
/// The browser with exactly that bundle identifier; empty for any other text.
std::optional<SupportedBrowser> supportedBrowser(std::string_view rawValue);

/// The name in log lines, and in the owner names of windows.
std::string_view displayName(SupportedBrowser browser);

/// Where its executable may lie, in the order in which the places are looked at. The home folder is read on each call.
std::vector<std::string> executableCandidates(SupportedBrowser browser, const FileManager& files);

/// What starts it as a bare window on the meeting; empty for those that are not started by their executable.
std::vector<std::string> launchArguments(SupportedBrowser browser, const std::string& meetURL);

/// The first of the detection order with a candidate that exists, whatever lies there; Safari where none does, because
/// it is part of the system. Any thread.
SupportedBrowser detectSupportedBrowser(const FileManager& files);

}  // namespace vantrel
