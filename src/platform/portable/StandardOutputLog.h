#pragma once

#include <memory>

#include "platform/portable/UnreadLines.h"
#include "platform/system/Log.h"

namespace vantrel {

/// Lines on a file descriptor, by default standard output. A reader that does not read holds nobody up: its lines wait
/// for it, and are dropped and counted on standard error when there are too many. If the reader is gone, the lines are
/// lost and nothing else happens, provided that SIGPIPE is ignored or not sent.
class StandardOutputLog final : public Log {
  public:
    explicit StandardOutputLog(int descriptor = 1, int errors = 2)
        : lines_(std::make_shared<UnreadLines>(descriptor, errors)) {}
    /// Waits for the reader, at most a second.
    ~StandardOutputLog() override { lines_->end(); }

    void print(std::string_view line) override;

  private:
    const std::shared_ptr<UnreadLines> lines_;
};

}  // namespace vantrel
