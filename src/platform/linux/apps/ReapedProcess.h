#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace vantrel::linuxdesktop {

enum class ExecutableLookup { asItStands, alongPath };

/// `error` is zero, or the errno value of what the system refused; then there is no process.
struct StartedProcess {
    pid_t process = 0;
    int error = 0;
};

/// Starts a program that nobody waits for: no shell, the client's environment, directory and standard streams, none of
/// its other files, signals as usual. It is reaped when it ends. `arguments` begins with the program's own name.
/// Returns once the program stands in the process or could not be put there. Any thread.
///
/// The process leads a group of its own, so that Ctrl-C in the terminal of the client reaches the client alone, which
/// ends what it started in its own way.
StartedProcess startReaped(const std::string& executable, const std::vector<std::string>& arguments,
                           ExecutableLookup lookup);

}  // namespace vantrel::linuxdesktop
