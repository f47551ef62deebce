#pragma once

#include <string>

#include "practice/configuration/PracticeConfiguration.h"
#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"
#include "practice/messages/RequestTarget.h"
#include "practice/state/ParticipantPresence.h"
#include "practice/state/SessionRegistry.h"

namespace vantrel::practice {

/// The trainer's page at "/", and its requests under /trainer.
class TrainerExchanges {
  public:
    TrainerExchanges(SessionRegistry& registry, const PracticeConfiguration& configuration);

    static bool isTrainer(const RequestTarget& target);

    /// `now` in seconds since 1970.
    PracticeReply handle(const PracticeRequest& request, const RequestTarget& target, double now);

  private:
    PracticeReply state(double now) const;
    PracticeReply end(const std::string& code);

    SessionRegistry& registry_;
    const ParticipantPresence presence_;
};

}  // namespace vantrel::practice
