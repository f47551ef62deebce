#include <benchmark/benchmark.h>

#include <string>

#include "browser/WindowDiscovery.h"

namespace vantrel {
namespace {

WindowDiscovery::Windows windowsOfOthers(std::int64_t count) {
    WindowDiscovery::Windows windows;
    for (std::int64_t number = 1; number <= count; ++number) {
        WindowEntry entry;
        entry.number = number;
        entry.ownerPID = static_cast<ProcessIdentifier>(400 + number % 40);
        entry.ownerName = "Anteprima di documenti " + std::to_string(number % 40);
        entry.name = "Documento " + std::to_string(number);
        entry.layer = 0;
        entry.bounds = Rect{{0, 0}, {800, 600}};
        entry.isOnscreen = true;
        windows.push_back(std::move(entry));
    }
    return windows;
}

/// One look at a list with nothing new: the number of every window is looked up.
void lookWhenNothingIsNew(benchmark::State& state) {
    const auto windows = windowsOfOthers(state.range(0));
    const auto known = WindowDiscovery::numbers(windows);
    for (auto _ : state) benchmark::DoNotOptimize(WindowDiscovery::newWindow(windows, known, 9999, "Google Chrome"));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(lookWhenNothingIsNew)->Arg(10)->Arg(300)->Arg(3000);

/// One look at a list in which every window is new and none belongs to the browser: every owner is compared.
void lookWhenEverythingIsNew(benchmark::State& state) {
    const auto windows = windowsOfOthers(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(WindowDiscovery::newWindow(windows, {}, 9999, "Google Chrome"));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(lookWhenEverythingIsNew)->Arg(10)->Arg(300)->Arg(3000);

/// The windows before the launch, once per session.
void collectKnownNumbers(benchmark::State& state) {
    const auto windows = windowsOfOthers(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(WindowDiscovery::numbers(windows));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(collectKnownNumbers)->Arg(10)->Arg(300)->Arg(3000);

}  // namespace
}  // namespace vantrel
