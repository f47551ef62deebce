#pragma once

#include <string>
#include <vector>

namespace vantrel::linuxdesktop {

/// A program that was run to its end in an environment of its own, with nothing on its standard input.
struct ProgramRun {
    /// The exit status; minus the signal that ended it; minus 1000 when it was ended here, because it went on.
    int end = 0;
    std::string standardOutput;
    std::string standardError;

    /// `environment` is all there is, as "NAME=value".
    static ProgramRun of(const std::string& executable, const std::vector<std::string>& environment);
};

}  // namespace vantrel::linuxdesktop
