#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "practice/configuration/PracticeConfiguration.h"
#include "practice/exchanges/TrainerPassword.h"
#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"

namespace vantrel::practice {

/// Who may use the trainer's page and the control interface: whoever knows the password, if there is one, and no page
/// of another site that happens to be open in the same browser.
class AccessRules {
  public:
    explicit AccessRules(const PracticeConfiguration& configuration);

    /// Empty when the request may pass.
    std::optional<PracticeReply> refusal(const PracticeRequest& request) const;

  private:
    bool isOwnHost(const std::string& host) const;
    bool isOwnOrigin(const std::string& origin, const std::string& host) const;

    // As in the public address, in lower case; empty without one.
    std::string publicOrigin_;
    std::string publicHost_;
    TrainerPassword password_;
};

}  // namespace vantrel::practice
