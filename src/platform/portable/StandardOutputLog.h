#pragma once

#include <mutex>

#include "platform/system/Log.h"

namespace vantrel {

/// Lines on a file descriptor, standard output unless told otherwise. A reader that has gone away loses the lines and
/// nothing else, provided that SIGPIPE is ignored or not sent.
class StandardOutputLog final : public Log {
  public:
    explicit StandardOutputLog(int descriptor = 1) : descriptor_(descriptor) {}

    void print(std::string_view line) override;

  private:
    const int descriptor_;
    std::mutex mutex_;
};

}  // namespace vantrel
