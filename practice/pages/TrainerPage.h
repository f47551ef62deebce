#pragma once

#include "practice/messages/PracticeReply.h"

namespace vantrel::practice {

/// The page on which the trainer follows the sessions. It holds nothing of them: its script asks /trainer/state once a
/// second, and puts whatever comes from outside on the page as text.
PracticeReply trainerPage();

}  // namespace vantrel::practice
