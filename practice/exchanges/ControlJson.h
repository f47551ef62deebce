#pragma once

#include <nlohmann/json_fwd.hpp>

#include "practice/state/PageReportLog.h"
#include "practice/state/ParticipantHistory.h"
#include "practice/state/PracticeParticipant.h"
#include "practice/state/ReceivedExchange.h"
#include "practice/state/ReplyRules.h"

namespace vantrel::practice {

// The values that the control interface shows; see practice/README.md.

nlohmann::json jsonOf(const ReceivedExchange& exchange);
nlohmann::json jsonOf(const PageReportLog::Entry& entry);
nlohmann::json jsonOf(const ReplyRules::Entry& entry);
/// With at most `newest` heartbeats and violations, the newest ones.
nlohmann::json jsonOf(const PracticeParticipant& participant, const ParticipantHistory& history, std::size_t newest);

}  // namespace vantrel::practice
