#pragma once

#include <sys/types.h>

#include <set>

namespace vantrel::linuxdesktop {

std::set<pid_t> childrenOf(pid_t parent);

/// The state in the process table; X if there is no such process.
char stateOf(pid_t process);

/// Whether the guard has told the kernel that it is there, which it does once it is about to watch. A guard that has
/// not counts for nothing: when all others go, the kernel continues the client.
bool isPresent(pid_t guard);

/// A zombie that nobody has reaped yet counts as gone.
bool exists(pid_t process);

}  // namespace vantrel::linuxdesktop
