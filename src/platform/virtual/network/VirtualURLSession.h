#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/network/URLSession.h"
#include "platform/virtual/network/NetworkAnswer.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// The network. The handler gets every request, and its answer is delivered in virtual time. Each hop of a redirect
/// goes to the handler again.
class VirtualURLSession final : public URLSession {
  public:
    using Handler = std::function<NetworkAnswer(const URLRequest&)>;

    explicit VirtualURLSession(Engine& engine) : engine_(engine) {}

    void dataTask(URLRequest request, Completion completion) override;

    /// Driver-facing, any thread: sets who answers. Called on the world's thread, one request at a time, when the
    /// request is made. Without a handler every connection is refused.
    void setHandler(Handler handler);

    struct Sent {
        double time = 0;
        URLRequest request;
    };
    /// The client's requests since the start, without the hops of redirects.
    std::vector<Sent> sent() const;
    /// The number of requests whose completion has not run.
    std::size_t underWay() const;

  private:
    struct Task {
        URLRequest request;
        Completion completion;
        std::string address;
        int redirects = 0;
    };
    using TaskPointer = std::shared_ptr<Task>;

    void ask(const TaskPointer& task);
    void follow(const TaskPointer& task, URLRequest next, double after);
    void deliver(const TaskPointer& task, double after, URLReply reply);

    Engine& engine_;
    mutable std::mutex mutex_;
    Handler handler_;
    std::vector<Sent> sent_;
    std::size_t underWay_ = 0;
};

}  // namespace vantrel::virtualmac
