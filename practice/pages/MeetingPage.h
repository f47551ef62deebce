#pragma once

#include <string_view>
#include <vector>

#include "practice/configuration/PracticeSession.h"
#include "practice/messages/PracticeReply.h"
#include "practice/state/PracticeParticipant.h"

namespace vantrel::practice {

/// The page that plays the meeting. It needs nothing from elsewhere. Once shown it only tells the server how it stands
/// and what is typed, see ReportExchanges, and does not mind when nobody listens.
PracticeReply meetingPage(const PracticeSession& session, const std::vector<PracticeParticipant>& participants);

/// 404, for people.
PracticeReply unknownMeetingPage(std::string_view code);

}  // namespace vantrel::practice
