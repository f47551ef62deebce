#include <benchmark/benchmark.h>

#include <string>

#include "server/HeartbeatService.h"
#include "server/VersionCheck.h"
#include "tests/doubles/SingleThreadComputer.h"

namespace vantrel {
namespace {

std::shared_ptr<HeartbeatService> makeService(singlethread::SingleThreadComputer& computer) {
    return std::make_shared<HeartbeatService>(
        HeartbeatService::Identity{"https://server.example", "NQRP5D", "token", "2.0-macOS"}, computer.requests(),
        computer.dispatch, computer.runLoop, computer.clock, computer.dates, computer.log);
}

/// Draining, building and serialising one heartbeat, until it is passed to the URL session.
void buildHeartbeat(benchmark::State& state) {
    singlethread::SingleThreadComputer computer;
    const auto service = makeService(computer);
    for (auto _ : state) {
        state.PauseTiming();
        for (int violation = 0; violation < state.range(0); ++violation)
            service->addViolation("KEY_BLOCKED", "Cmd+Tab");
        state.ResumeTiming();
        service->start();
        service->stop();
    }
    state.counters["bytes"] =
        benchmark::Counter(static_cast<double>(computer.session.sentBytes), benchmark::Counter::kAvgIterations);
}
BENCHMARK(buildHeartbeat)->Arg(0)->Arg(10)->Arg(1000);

/// Reading one reply of about this many bytes.
void readReply(benchmark::State& state) {
    singlethread::SingleThreadComputer computer;
    std::string body = R"({"updateAvailable":false,"more":[)";
    while (body.size() + 20 < static_cast<std::size_t>(state.range(0))) body += R"({"a":"b","c":12},)";
    body += "null]}";
    const URLReply reply{{}, 200, body};
    const VersionCheck check(computer.requests(), computer.urls, computer.log);
    for (auto _ : state) benchmark::DoNotOptimize(check.read(reply));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(body.size()));
}
BENCHMARK(readReply)->Arg(1 << 10)->Arg(1 << 20);

/// One violation, from one and from eight threads on one service.
void addViolation(benchmark::State& state) {
    static singlethread::SingleThreadComputer computer;
    static const auto service = makeService(computer);
    for (auto _ : state) service->addViolation("KEY_BLOCKED", "Cmd+Tab");
    if (state.thread_index() == 0) {
        service->start();
        service->stop();
    }
}
BENCHMARK(addViolation)->Threads(1)->Threads(8)->Iterations(100000)->UseRealTime();

}  // namespace
}  // namespace vantrel
