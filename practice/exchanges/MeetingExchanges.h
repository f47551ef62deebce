#pragma once

#include <string>

#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"
#include "practice/messages/RequestTarget.h"
#include "practice/state/PageReportLog.h"
#include "practice/state/SessionRegistry.h"

namespace vantrel::practice {

/// What the meeting page exchanges by itself: it reports to /meet/CODE/reports, and asks /meet/CODE/state whether the
/// server is still there.
class MeetingExchanges {
  public:
    MeetingExchanges(const SessionRegistry& registry, PageReportLog& reports);

    static bool isMeeting(const RequestTarget& target);

    /// `now` in seconds since 1970.
    PracticeReply handle(const PracticeRequest& request, const RequestTarget& target, double now);

  private:
    PracticeReply state(const std::string& code) const;
    PracticeReply addReports(const std::string& code, const std::string& text, double now);

    const SessionRegistry& registry_;
    PageReportLog& reports_;
};

}  // namespace vantrel::practice
