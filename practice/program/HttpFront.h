#pragma once

#include <memory>
#include <optional>

#include "practice/PracticeServer.h"

namespace vantrel::practice {

class StopSignal;

/// Carries a PracticeServer's exchanges over HTTP on 127.0.0.1, one exchange a connection, and does the waiting,
/// dropping and stalling that its replies ask for. 32 exchanges are under way at once; a delayed or stalled one holds
/// up no other until there are as many of them.
class HttpFront {
  public:
    /// Both have to outlive it.
    HttpFront(PracticeServer& practice, const StopSignal& stop);
    ~HttpFront();
    HttpFront(const HttpFront&) = delete;
    HttpFront& operator=(const HttpFront&) = delete;

    /// Starts listening and returns the port; 0 takes a free one. Empty when the port is not to be had.
    std::optional<int> listen(int port);
    /// Ends everything under way and waits for it. The stop signal has to be raised already.
    void end();

  private:
    class Library;

    std::unique_ptr<Library> library_;
};

}  // namespace vantrel::practice
