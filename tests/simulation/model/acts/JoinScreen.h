#pragma once

#include "tests/simulation/model/acts/Stage.h"

namespace vantrel::simulation {

/// From the activation policy to the first log line.
void launchClient(Stage& stage);
/// The join button's action, up to the progress text.
void tapJoin(Stage& stage);
/// What the join has come to, and the activation if it has succeeded.
void takeJoinResult(Stage& stage);
void startNewSession(Stage& stage);
void answerQuit(Stage& stage);
/// The version request, one second after the launch.
void checkVersion(Stage& stage);

/// Without spaces, of any kind, and tabs at both ends.
std::string trimmed(std::string_view text);
/// What the join screen says of the first field that is empty; empty if none is.
std::string_view missingField(const Client& client);
/// Whether an address surely can be formed of it.
bool isPlainAddress(std::string_view address);
/// The saved address or the default one, without one slash at its end.
std::string baseAddress(const Client& client);

}  // namespace vantrel::simulation
