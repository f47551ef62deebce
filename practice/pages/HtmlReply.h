#pragma once

#include <string>

#include "practice/messages/PracticeReply.h"

namespace vantrel::practice {

/// A page that is shown fresh each time, and needs nothing but this server: scripts and styles come from its own files
/// and never stand in the page, and no other page can show it in a frame.
PracticeReply htmlReply(int status, std::string html);

}  // namespace vantrel::practice
