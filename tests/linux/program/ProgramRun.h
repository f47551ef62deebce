#pragma once

#include <string>
#include <vector>

namespace vantrel::linuxdesktop {

/// A program that was run to its end in an environment of its own, with empty standard input.
struct ProgramRun {
    /// The exit status, or minus the signal that ended it, or -1000 if it did not end and was stopped here.
    int end = 0;
    std::string standardOutput;
    std::string standardError;

    /// `environment` is the complete environment, as "NAME=value".
    static ProgramRun of(const std::string& executable, const std::vector<std::string>& environment,
                         const std::vector<std::string>& arguments = {});
};

}  // namespace vantrel::linuxdesktop
