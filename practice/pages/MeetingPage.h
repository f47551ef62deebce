#pragma once

#include <string_view>
#include <vector>

#include "practice/configuration/PracticeSession.h"
#include "practice/messages/PracticeReply.h"
#include "practice/state/PracticeParticipant.h"

namespace vantrel::practice {

/// The page that plays the meeting. It needs nothing from outside. Once shown, it reports its state and what is typed
/// to the server (see MeetingExchanges). It works even if the server is gone, and says that it is.
PracticeReply meetingPage(const PracticeSession& session, const std::vector<PracticeParticipant>& participants);

/// 404, as a page for people.
PracticeReply unknownMeetingPage(std::string_view code);

}  // namespace vantrel::practice
