#pragma once

#include <string>

#include "practice/messages/PracticeReply.h"

namespace vantrel::practice {

/// A page that is shown fresh each time, and can fetch nothing from elsewhere: not a script, not a picture, and only
/// from this server what its own script asks for.
PracticeReply htmlReply(int status, std::string html);

}  // namespace vantrel::practice
