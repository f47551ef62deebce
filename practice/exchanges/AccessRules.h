#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "practice/configuration/PracticeConfiguration.h"
#include "practice/exchanges/TrainerPassword.h"
#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"

namespace vantrel::practice {

/// Decides who may use the trainer's page and the control interface: anybody who knows the password, if there is one,
/// but no page of another site that happens to be open in the same browser.
class AccessRules {
  public:
    explicit AccessRules(const PracticeConfiguration& configuration);

    /// Empty if the request may pass.
    std::optional<PracticeReply> refusal(const PracticeRequest& request) const;

  private:
    bool isOwnHost(const std::string& host) const;
    bool isOwnOrigin(const std::string& origin, const std::string& host) const;

    // From the public address, in lower case. Empty without one.
    std::string publicOrigin_;
    std::string publicHost_;
    TrainerPassword password_;
};

}  // namespace vantrel::practice
