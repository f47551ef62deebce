#pragma once

#include "practice/messages/PracticeReply.h"

namespace vantrel::practice {

/// The page on which the trainer follows the sessions. It contains no data: its script asks /trainer/state once a
/// second, and shows data from outside only as text.
PracticeReply trainerPage();

}  // namespace vantrel::practice
