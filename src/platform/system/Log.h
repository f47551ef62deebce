#pragma once

#include <string_view>

namespace vantrel {

/// The diagnostic output: lines on standard output. Any thread.
class Log {
  public:
    virtual ~Log() = default;

    /// Writes the text and a line break in one piece, not mixed with lines of other threads, and flushes.
    virtual void print(std::string_view line) = 0;
};

}  // namespace vantrel
