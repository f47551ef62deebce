#pragma once

#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"
#include "practice/messages/RequestTarget.h"
#include "practice/state/PageReportLog.h"
#include "practice/state/SessionRegistry.h"

namespace vantrel::practice {

/// What the meeting page sends by itself, to /meet/CODE/reports.
class MeetingExchanges {
  public:
    MeetingExchanges(const SessionRegistry& registry, PageReportLog& reports);

    static bool isMeeting(const RequestTarget& target);

    /// `now` in seconds since 1970.
    PracticeReply handle(const PracticeRequest& request, const RequestTarget& target, double now);

  private:
    const SessionRegistry& registry_;
    PageReportLog& reports_;
};

}  // namespace vantrel::practice
