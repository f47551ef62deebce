#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "platform/portable/Outlet.h"

namespace vantrel {

/// Writes text to a stream whose reader may stop reading. The caller never waits for the reader: what the stream does
/// not take at once is kept, at most about four megabytes, and written in order by a thread of its own as soon as the
/// reader goes on. The stream's flags stay as they are, for other processes may share it. Any thread.
class UnreadLines : public std::enable_shared_from_this<UnreadLines> {
  public:
    /// Lines that had to be dropped are counted on the stream `errors`.
    UnreadLines(int stream, int errors) : stream_(stream), errors_(errors) {}
    ~UnreadLines();
    UnreadLines(const UnreadLines&) = delete;
    UnreadLines& operator=(const UnreadLines&) = delete;

    /// One line with its line break.
    void write(std::string_view line);

    /// Waits for the reader, at most a second, and drops what it has not taken by then.
    void end();
    /// The same for all streams, for a process that ends without destroying them. exit() calls it.
    static void endAll();

  private:
    bool startThread();
    void run();
    void wait() const;
    void reportDropped();

    const Outlet stream_;
    const Outlet errors_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::string> kept_;
    std::size_t bytes_ = 0;
    std::size_t dropped_ = 0;
    bool gone_ = false;
    bool ended_ = false;
    /// Both ends of a pipe that ends the thread's wait.
    std::array<int, 2> wake_{-1, -1};
    std::thread thread_;
};

}  // namespace vantrel
