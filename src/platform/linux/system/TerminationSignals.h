#pragma once

#include <signal.h>

#include <array>
#include <memory>

#include "platform/threads/Block.h"

class QSocketNotifier;

namespace vantrel::linuxdesktop {

/// Turns the signals that ask a process to end (log-out, closed terminal, Ctrl-C) into an event on the main thread. One
/// at a time in a process. The destructor restores the former handlers.
class TerminationSignals {
  public:
    explicit TerminationSignals(Block onSignal);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

  private:
    static constexpr std::array signals_{SIGTERM, SIGINT, SIGHUP};

    std::array<struct sigaction, signals_.size()> former_{};
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace vantrel::linuxdesktop
