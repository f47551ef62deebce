#pragma once

#include <mutex>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "rehearsal/transcript/Transcript.h"

namespace vantrel::rehearsal {

/// What the client did wrong, in the order in which it did. Any thread.
class Misuses {
  public:
    /// `stream` is where the transcript writes.
    Misuses(Transcript& transcript, std::ostream& stream) : transcript_(transcript), stream_(stream) {}

    /// Ends the program if there are too many.
    void add(double time, std::string what);
    /// After this nothing of the client can go on, or nobody could join its threads any more.
    [[noreturn]] void addAndExit(double time, std::string what);
    /// False when there is nothing to write.
    bool writeAll();

  private:
    /// Ends the program as it is, with the transcript written: the client's threads cannot be ended.
    [[noreturn]] void breakOff(double time, std::string what);
    void write();

    Transcript& transcript_;
    std::ostream& stream_;
    std::mutex mutex_;
    std::vector<std::pair<double, std::string>> list_;
};

}  // namespace vantrel::rehearsal
