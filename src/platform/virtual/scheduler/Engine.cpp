#include "platform/virtual/scheduler/Engine.h"

#include <cstdio>
#include <cstdlib>

namespace vantrel::virtualmac {

Engine::Engine(const Options& options)
    : onMisuse_(options.onMisuse),
      onWrongThread_(options.onWrongThread),
      scheduler(
          {options.seed, options.freeRunning, [this](const std::string& what) { misuse(what); }, options.choices}),
      journal([this] { return toSeconds(scheduler.now()); }, options.onEvent),
      mainLoop(scheduler),
      world(scheduler, Scheduler::Rank::world),
      urlSession(scheduler, Scheduler::Rank::urlSession),
      workers(scheduler) {}

void Engine::start() {
    world.start();
    mainLoop.start();
    urlSession.start();
}

bool Engine::stop() {
    mainLoop.stop();
    world.stop();
    urlSession.stop();
    constexpr double limit = 60 * 60;
    scheduler.waitUntilIdle(limit);
    constexpr int mostRounds = 1000;
    for (int round = 0; round < mostRounds && scheduler.releaseStuck(); ++round) scheduler.waitUntilIdle(limit);
    return scheduler.isAlone();
}

void Engine::join() {
    if (!scheduler.isAlone() || mainLoop.hasExited()) {
        std::fputs("virtual Mac: a thread does not end\n", stderr);
        std::abort();
    }
    mainLoop.join();
    world.join();
    urlSession.join();
}

void Engine::joinOthers() {
    world.join();
    urlSession.join();
    workers.join();
}

void Engine::mainThreadCall(std::string_view what) {
    if (!isMainThread()) {
        const std::string called = std::string(what) + " off the main thread";
        onWrongThread_ ? onWrongThread_(called) : misuse(called);
    }
    platformCall();
}

void Engine::misuse(const std::string& what) const {
    if (onMisuse_) return onMisuse_(what);
    std::fprintf(stderr, "virtual Mac: misuse: %s\n", what.c_str());
    std::abort();
}

void Engine::endProcess() {
    journal.mute();
    mainLoop.endProcess();
}

}  // namespace vantrel::virtualmac
