#pragma once

#include "practice/PageReportLog.h"
#include "practice/PracticeReply.h"
#include "practice/PracticeRequest.h"
#include "practice/RequestTarget.h"
#include "practice/SessionRegistry.h"

namespace vantrel::practice {

/// What the meeting page sends by itself, to /meet/CODE/reports.
class ReportExchanges {
  public:
    ReportExchanges(const SessionRegistry& registry, PageReportLog& reports);

    static bool isReport(const RequestTarget& target);

    /// `now` in seconds since 1970.
    PracticeReply handle(const PracticeRequest& request, const RequestTarget& target, double now);

  private:
    const SessionRegistry& registry_;
    PageReportLog& reports_;
};

}  // namespace vantrel::practice
