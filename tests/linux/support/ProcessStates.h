#pragma once

#include <sys/types.h>

#include <set>

namespace vantrel::linuxdesktop {

std::set<pid_t> childrenOf(pid_t parent);

/// The state in the process table; X if there is no such process.
char stateOf(pid_t process);

/// A zombie that nobody has reaped yet counts as gone.
bool exists(pid_t process);

}  // namespace vantrel::linuxdesktop
