#pragma once

#include <string>

#include "practice/messages/PracticeReply.h"

namespace vantrel::practice {

/// A page that is never cached and needs only this server: its scripts and styles are separate files and never inline,
/// and no other page can show it in a frame.
PracticeReply htmlReply(int status, std::string html);

}  // namespace vantrel::practice
