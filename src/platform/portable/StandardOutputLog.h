#pragma once

#include <mutex>

#include "platform/system/Log.h"

namespace vantrel {

/// Lines on a file descriptor, by default standard output. If the reader is gone, the lines are lost and nothing else
/// happens, provided that SIGPIPE is ignored or not sent.
class StandardOutputLog final : public Log {
  public:
    explicit StandardOutputLog(int descriptor = 1) : descriptor_(descriptor) {}

    void print(std::string_view line) override;

  private:
    const int descriptor_;
    std::mutex mutex_;
};

}  // namespace vantrel
