#pragma once

#include <sys/types.h>

namespace vantrel {

/// What a client says on the line to the process that watches it: its main thread answers and goes on being watched, or
/// nothing is expected of it for now.
inline constexpr char watchedAnswer = '+';
inline constexpr char watchedRest = '-';

/// Watches the client at the other end of the line. Once it has given an answer and then says nothing for twice the
/// patience, it is ended (signal 9), and that is said on standard error. Twice, because a computer that wakes up may
/// count its sleep: the client then has the second half for itself. Returns when the client is gone or has been ended.
void watchClient(int line, pid_t client, int patienceMilliseconds);

}  // namespace vantrel
