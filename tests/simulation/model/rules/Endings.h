#pragma once

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/reading/Transcript.h"

namespace vantrel::simulation {

void oneEndForEachLockdown(const Transcript& transcript, Verdict& verdict);
void oneNoticeForEachEnd(const Transcript& transcript, Verdict& verdict);
void noTapWithoutLockdown(const Transcript& transcript, Verdict& verdict);
void noMeetingWithoutLockdown(const Transcript& transcript, Verdict& verdict);
void theEndIsShort(const Transcript& transcript, Verdict& verdict);
void nothingIsLeft(const Transcript& transcript, Verdict& verdict);

}  // namespace vantrel::simulation
