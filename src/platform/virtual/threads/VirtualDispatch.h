#pragma once

#include "platform/threads/Dispatch.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// The queues of the virtual Mac.
class VirtualDispatch final : public Dispatch {
  public:
    explicit VirtualDispatch(Engine& engine) : engine_(engine), main_(engine), global_(engine) {}

    DispatchQueue& mainQueue() override { return main_; }
    DispatchQueue& userInitiatedQueue() override { return global_; }
    std::shared_ptr<Semaphore> makeSemaphore(int value) override;
    std::shared_ptr<DispatchGroup> makeGroup() override;

  private:
    class MainQueue final : public DispatchQueue {
      public:
        explicit MainQueue(Engine& engine) : engine_(engine) {}
        void async(Block block) override { asyncAfter(0, std::move(block)); }
        void asyncAfter(double seconds, Block block) override;

      private:
        Engine& engine_;
    };

    class GlobalQueue final : public DispatchQueue {
      public:
        explicit GlobalQueue(Engine& engine) : engine_(engine) {}
        void async(Block block) override { asyncAfter(0, std::move(block)); }
        void asyncAfter(double seconds, Block block) override;

      private:
        Engine& engine_;
    };

    Engine& engine_;
    MainQueue main_;
    GlobalQueue global_;
};

}  // namespace vantrel::virtualmac
