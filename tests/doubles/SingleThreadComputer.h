#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/network/URLSession.h"
#include "platform/portable/ICUText.h"
#include "platform/portable/PortableJSONSerialization.h"
#include "platform/portable/PortableURLs.h"
#include "platform/portable/UTCDateFormatter.h"
#include "platform/system/Log.h"
#include "platform/system/UserDefaults.h"
#include "platform/threads/Clock.h"
#include "platform/threads/Dispatch.h"
#include "platform/threads/RunLoop.h"
#include "server/ServerRequests.h"

namespace vantrel::singlethread {

/// Keeps blocks until told to run them.
class Queue final : public DispatchQueue {
  public:
    void async(Block block) override { blocks_.push_back(std::move(block)); }
    void asyncAfter(double, Block block) override { blocks_.push_back(std::move(block)); }

    void runAll() {
        while (!blocks_.empty()) {
            const auto block = std::move(blocks_.front());
            blocks_.pop_front();
            block();
        }
    }

  private:
    std::deque<Block> blocks_;
};

/// Never blocks.
class OpenSemaphore final : public Semaphore {
  public:
    void signal() override {}
    bool wait(double) override { return true; }
};

class SingleThreadDispatch final : public Dispatch {
  public:
    DispatchQueue& mainQueue() override { return queue; }
    DispatchQueue& userInitiatedQueue() override { return queue; }
    std::shared_ptr<Semaphore> makeSemaphore(int) override { return std::make_shared<OpenSemaphore>(); }
    std::shared_ptr<DispatchGroup> makeGroup() override { return nullptr; }

    Queue queue;
};

/// Its timers never fire.
class StillRunLoop final : public RunLoop {
  public:
    [[nodiscard]] std::unique_ptr<Timer> scheduledTimer(double, bool, Block) override {
        return std::make_unique<StillTimer>();
    }

  private:
    class StillTimer final : public Timer {
      public:
        void invalidate() override {}
    };
};

class StoppedClock final : public Clock {
  public:
    double uptime() const override { return 0; }
    double secondsSince1970() const override { return 1772438400; }
};

/// Counts the lines and forgets them.
class CountingLog final : public Log {
  public:
    void print(std::string_view line) override { bytes += line.size(); }

    std::size_t bytes = 0;
};

class FixedDefaults final : public UserDefaults {
  public:
    std::optional<std::string> string(std::string_view) const override { return "https://server.example"; }
    void set(std::string_view, std::string_view) override {}
};

/// Completes every request before dataTask() returns, with the next reply. The last reply is repeated.
class ScriptedSession final : public URLSession {
  public:
    void dataTask(URLRequest request, Completion completion) override {
        sentBytes += request.body.value_or("").size();
        if (onRequest) onRequest(request);
        auto reply = replies.front();
        if (replies.size() > 1) replies.pop_front();
        completion(std::move(reply));
    }

    std::deque<URLReply> replies{URLReply{}};
    std::function<void(const URLRequest&)> onRequest;
    std::size_t sentBytes = 0;
};

/// A computer that does everything at once on one thread, for fuzzers and benchmarks, which need only the rules.
struct SingleThreadComputer {
    SingleThreadDispatch dispatch;
    StillRunLoop runLoop;
    StoppedClock clock;
    CountingLog log;
    FixedDefaults defaults;
    ScriptedSession session;
    PortableURLs urls;
    PortableJSONSerialization json;
    ICUText unicode;
    UTCDateFormatter dates;

    ServerRequests requests() { return ServerRequests(dispatch, urls, json, session); }
};

}  // namespace vantrel::singlethread
