#pragma once

#include <memory>

#include "platform/threads/Clock.h"
#include "platform/threads/Dispatch.h"
#include "platform/threads/RunLoop.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

class CheckedQueue final : public DispatchQueue {
  public:
    CheckedQueue(Engine& engine, DispatchQueue& queue) : engine_(engine), queue_(queue) {}

    DispatchQueue& original() { return queue_; }
    void async(Block block) override;
    void asyncAfter(double seconds, Block block) override;

  private:
    Engine& engine_;
    DispatchQueue& queue_;
};

class CheckedDispatch final : public Dispatch {
  public:
    CheckedDispatch(Engine& engine, Dispatch& dispatch)
        : engine_(engine),
          dispatch_(dispatch),
          main_(engine, dispatch.mainQueue()),
          global_(engine, dispatch.userInitiatedQueue()) {}

    DispatchQueue& mainQueue() override { return main_; }
    DispatchQueue& userInitiatedQueue() override { return global_; }
    std::shared_ptr<Semaphore> makeSemaphore(int value) override;
    std::shared_ptr<DispatchGroup> makeGroup() override;

  private:
    Engine& engine_;
    Dispatch& dispatch_;
    CheckedQueue main_;
    CheckedQueue global_;
};

class CheckedRunLoop final : public RunLoop {
  public:
    CheckedRunLoop(Engine& engine, RunLoop& runLoop) : engine_(engine), runLoop_(runLoop) {}

    std::unique_ptr<Timer> scheduledTimer(double intervalSeconds, bool repeats, Block block) override;

  private:
    Engine& engine_;
    RunLoop& runLoop_;
};

class CheckedClock final : public Clock {
  public:
    CheckedClock(Engine& engine, const Clock& clock) : engine_(engine), clock_(clock) {}

    double uptime() const override;
    double secondsSince1970() const override;

  private:
    Engine& engine_;
    const Clock& clock_;
};

}  // namespace vantrel::virtualmac
