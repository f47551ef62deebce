#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace vantrel::linuxdesktop {

enum class ExecutableLookup { asItStands, alongPath };

/// `error` is zero, or the errno value if the system refused; then there is no process.
struct StartedProcess {
    pid_t process = 0;
    int error = 0;
};

/// Starts a program that no caller waits for: no shell, the environment that the client got (OwnEnvironment), its
/// directory and standard streams, none of its other open files, default signal handling. It is reaped when it ends.
/// `arguments` begins with the program's own name. Returns once the program has replaced the forked process or has
/// failed to. Any thread.
///
/// The process leads its own process group. So Ctrl-C in the client's terminal reaches the client alone, which ends its
/// processes in its own way.
StartedProcess startReaped(const std::string& executable, const std::vector<std::string>& arguments,
                           ExecutableLookup lookup);

}  // namespace vantrel::linuxdesktop
