#include <benchmark/benchmark.h>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "lockdown/BlockedCombination.h"
#include "lockdown/WindowMonitorService.h"
#include "platform/virtual/VirtualMac.h"

namespace vantrel {
namespace {

constexpr std::uint64_t shift = 0x20000;
constexpr std::uint64_t command = 0x100000;

/// Ordinary typing: letters, some of them capital, Return, arrows. Nothing is swallowed.
void decideOnTyping(benchmark::State& state) {
    std::array<KeyEvent, 256> keys;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        keys.at(i) = {KeyEventType::keyDown, static_cast<std::int64_t>(i * 37 % 127), i % 9 == 0 ? shift : 0};
    }
    std::size_t next = 0;
    for (auto _ : state) benchmark::DoNotOptimize(blockedCombination(keys[next++ % keys.size()]));
}
BENCHMARK(decideOnTyping);

/// Command with a key that may pass: every rule is checked and none applies.
void decideOnAPassingCommand(benchmark::State& state) {
    KeyEvent key{KeyEventType::keyDown, 43, command | shift};
    for (auto _ : state) {
        benchmark::DoNotOptimize(key);
        benchmark::DoNotOptimize(blockedCombination(key));
    }
}
BENCHMARK(decideOnAPassingCommand);

void decideOnASwallowedKey(benchmark::State& state) {
    KeyEvent key{KeyEventType::keyDown, 12, command};
    for (auto _ : state) {
        benchmark::DoNotOptimize(key);
        benchmark::DoNotOptimize(blockedCombination(key));
    }
}
BENCHMARK(decideOnASwallowedKey);

/// A list that does not change. The system's time for making one is not the client's cost.
class StillWindowList final : public WindowList {
  public:
    explicit StillWindowList(std::vector<WindowEntry> windows) : windows_(std::move(windows)) {}
    std::optional<std::vector<WindowEntry>> copy(WindowListOption) const override { return windows_; }

  private:
    const std::vector<WindowEntry> windows_;
};

/// Hands out its timer's block, to be run at will.
class HandRunLoop final : public RunLoop {
  public:
    std::unique_ptr<Timer> scheduledTimer(double, bool, Block block) override {
        this->block = std::move(block);
        return std::make_unique<StoppedTimer>();
    }
    Block block;

  private:
    class StoppedTimer final : public Timer {
      public:
        void invalidate() override {}
    };
};

/// The meeting in full screen is last in the list, as if every other window were above it.
std::vector<WindowEntry> windowsAbove(std::int64_t count, ProcessIdentifier browser) {
    std::vector<WindowEntry> windows;
    for (std::int64_t number = 1; number <= count; ++number) {
        WindowEntry entry;
        entry.number = number;
        entry.ownerPID = number == count ? browser : static_cast<ProcessIdentifier>(4000 + number % 40);
        entry.ownerName = "Altra";
        entry.name = "Documento";
        entry.layer = 0;
        entry.bounds = Rect{{0, 0}, {1440, 900}};
        entry.isOnscreen = true;
        windows.push_back(std::move(entry));
    }
    return windows;
}

/// One tick of a faultless meeting. The rest of the Mac is virtual; its calls add a constant to each tick.
void tick(benchmark::State& state) {
    virtualmac::VirtualMac mac;
    virtualmac::ApplicationDescription chrome;
    chrome.name = "Google Chrome";
    chrome.bundleIdentifier = "com.google.Chrome";
    const auto process = mac.processes().add(chrome);
    StillWindowList windows(windowsAbove(state.range(0), process));
    HandRunLoop runLoop;
    mac.onMain([&] {
        auto& computer = mac.computer();
        const auto launcher = std::make_shared<BrowserLauncher>(BrowserLauncher::Dependencies{
            computer.files, computer.processLauncher, computer.runningApplications, computer.applicationOpener,
            computer.windowList, computer.accessibility, computer.screens, computer.urls, computer.dispatch,
            computer.mainRunLoop, computer.threads, computer.clock, computer.log});
        launcher->adoptRunningApplication(computer.runningApplications.withProcessIdentifier(process));
        const auto monitor = std::make_shared<WindowMonitorService>(
            WindowMonitorService::Dependencies{computer.runningApplications, windows, computer.accessibility,
                                               computer.screens, computer.spaces, computer.frontmostApplication,
                                               computer.mainBundle, computer.dispatch, runLoop, computer.log},
            BrowserKill(computer.runningApplications, computer.processLauncher, computer.threads, computer.clock,
                        computer.log));
        monitor->startMonitoring(launcher);
        monitor->setFullscreenConfirmed(true);
        for (auto _ : state) runLoop.block();
        monitor->stopMonitoring();
        runLoop.block = nullptr;
    });
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(tick)->Arg(10)->Arg(300)->Arg(3000);

}  // namespace
}  // namespace vantrel
