#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include "platform/threads/Block.h"

namespace vantrel::linuxdesktop {

/// Runs blocks one after another on its own thread. The destructor runs the blocks that still wait. Any thread.
class SerialQueue {
  public:
    SerialQueue();
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void async(Block block);

  private:
    void run();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Block> blocks_;
    bool stopping_ = false;
    std::thread thread_;
};

}  // namespace vantrel::linuxdesktop
