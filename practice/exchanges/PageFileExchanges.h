#pragma once

#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"
#include "practice/messages/RequestTarget.h"

namespace vantrel::practice {

/// The scripts and styles of the pages, under /pages.
class PageFileExchanges {
  public:
    static bool isPageFile(const RequestTarget& target);

    static PracticeReply handle(const PracticeRequest& request, const RequestTarget& target);
};

}  // namespace vantrel::practice
