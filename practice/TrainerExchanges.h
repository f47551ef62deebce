#pragma once

#include <string>

#include "practice/ParticipantPresence.h"
#include "practice/PracticeConfiguration.h"
#include "practice/PracticeReply.h"
#include "practice/PracticeRequest.h"
#include "practice/RequestTarget.h"
#include "practice/SessionRegistry.h"

namespace vantrel::practice {

/// The trainer's page at "/", and what it asks for under /trainer.
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
