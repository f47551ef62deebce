#pragma once

#include <string_view>

/// The files beside this header, by their names, as CMake embeds them in the program (embed.cmake).
namespace vantrel::practice::pagefiles {

extern const std::string_view meetingContactJs;
extern const std::string_view meetingCss;
extern const std::string_view meetingDevicesJs;
extern const std::string_view meetingEndedHtml;
extern const std::string_view meetingHtml;
extern const std::string_view meetingJs;
extern const std::string_view meetingTileHtml;
extern const std::string_view meetingUnknownHtml;
extern const std::string_view trainerCss;
extern const std::string_view trainerHtml;
extern const std::string_view trainerJs;
extern const std::string_view trainerNewsJs;
extern const std::string_view trainerNodesJs;

}  // namespace vantrel::practice::pagefiles
