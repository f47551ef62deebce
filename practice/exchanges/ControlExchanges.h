#pragma once

#include <string>

#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"
#include "practice/messages/RequestTarget.h"
#include "practice/state/ExchangeLog.h"
#include "practice/state/PageReportLog.h"
#include "practice/state/ReplyRules.h"
#include "practice/state/SessionRegistry.h"

namespace vantrel::practice {

/// A test's requests under /control.
class ControlExchanges {
  public:
    ControlExchanges(SessionRegistry& registry, ReplyRules& replyRules, ExchangeLog& log, PageReportLog& reports);

    static bool isControl(const RequestTarget& target);

    PracticeReply handle(const PracticeRequest& request, const RequestTarget& target);

  private:
    PracticeReply addReplyRule(const std::string& body);
    PracticeReply reset(const std::string& body);
    PracticeReply received() const;
    PracticeReply reports() const;
    PracticeReply end(const std::string& code);
    PracticeReply participant(const std::string& token) const;
    PracticeReply state() const;

    SessionRegistry& registry_;
    ReplyRules& replyRules_;
    ExchangeLog& log_;
    PageReportLog& reports_;
};

}  // namespace vantrel::practice
