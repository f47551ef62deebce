#include "platform/virtual/threads/VirtualRunLoop.h"

#include <utility>

namespace vantrel::virtualmac {

namespace {

class VirtualTimer final : public Timer {
  public:
    VirtualTimer(MainRunLoop& loop, TimerTable::State state) : loop_(loop), state_(std::move(state)) {}
    ~VirtualTimer() override { loop_.invalidate(*state_); }
    VirtualTimer(const VirtualTimer&) = delete;
    VirtualTimer& operator=(const VirtualTimer&) = delete;

    void invalidate() override { loop_.invalidate(*state_); }

  private:
    MainRunLoop& loop_;
    TimerTable::State state_;
};

}  // namespace

std::unique_ptr<Timer> VirtualRunLoop::scheduledTimer(double intervalSeconds, bool repeats, Block block) {
    return std::make_unique<VirtualTimer>(engine_.mainLoop,
                                          engine_.mainLoop.addTimer(intervalSeconds, repeats, std::move(block)));
}

}  // namespace vantrel::virtualmac
