#pragma once

#include <signal.h>

#include <array>
#include <memory>

#include "platform/threads/Block.h"

class QSocketNotifier;

namespace vantrel::linuxdesktop {

/// Turns the signals that ask a process to end (a log-out, a closed terminal, Ctrl-C) into an event on the main thread.
/// One at a time in a process; the former handlers come back when it dies.
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
