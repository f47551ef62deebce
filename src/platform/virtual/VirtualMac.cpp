#include "platform/virtual/VirtualMac.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace vantrel::virtualmac {

namespace {

constexpr double longestIdling = 24 * 60 * 60;
constexpr int mostRounds = 1000;

}  // namespace

VirtualMac::VirtualMac(Options options)
    : reportLeftovers_(options.reportLeftovers),
      systemVersion_(options.systemVersion),
      engine_(options),
      screens_(engine_),
      desktop_(engine_, [this] { return screens_.displays(); }),
      activations_(desktop_, options.systemVersion),
      processes_(engine_, files_, desktop_, activations_, options.bundleIdentifier),
      windows_(engine_, desktop_),
      application_({engine_, desktop_, activations_, processes_, windows_}),
      alerts_({engine_, desktop_, activations_, processes_, windows_, application_}),
      menus_(engine_),
      statusBar_(engine_, menus_),
      spaces_(engine_, desktop_),
      overlays_(engine_, desktop_),
      trust_(engine_),
      keyboard_(engine_, trust_),
      keys_({engine_, desktop_, spaces_, processes_}),
      windowList_({engine_, desktop_, processes_, screens_, windows_, overlays_}),
      workspace_(engine_),
      opener_(engine_, processes_),
      frontmost_(desktop_, processes_),
      applications_(processes_),
      accessibility_(engine_, desktop_, processes_, trust_),
      capture_(engine_),
      dispatch_(engine_),
      runLoop_(engine_),
      threads_(engine_),
      clock_(engine_, options.calendarStart),
      log_(engine_),
      defaults_(engine_, {options.settings.begin(), options.settings.end()}),
      network_(engine_),
      bundle_(options.bundleIdentifier),
      parts_{application_, alerts_,    windows_, statusBar_, screens_,      spaces_,    overlays_,      keyboard_,
             windowList_,  workspace_, opener_,  frontmost_, applications_, processes_, accessibility_, trust_,
             capture_,     dispatch_,  runLoop_, threads_,   clock_,        log_,       defaults_,      urls_,
             network_,     json_,      unicode_, dates_,     files_,        bundle_},
      checked_(engine_, parts_),
      participant_({{engine_, desktop_, spaces_, processes_, keyboard_, keys_},
                    windows_,
                    alerts_,
                    menus_,
                    statusBar_,
                    application_,
                    capture_,
                    options.systemVersion}) {
    activations_.makeFrontmost = [this](ProcessIdentifier process) {
        return accessibility_.application(process)->setAttribute("AXFrontmost", true);
    };
    accessibility_.onDenied = [this] { keyboard_.noteLostTrust(); };
    screens_.onChange = [this] { desktop_.followDisplays(); };
    desktop_.client = processes_.ownProcess();
    desktop_.clientShowsAWindow = [this] { return windows_.front().has_value(); };
    engine_.start();
}

VirtualMac::~VirtualMac() {
    end();
    engine_.join();
}

bool VirtualMac::end() {
    const bool leftovers = !hasExited() && (!alerts_.up().empty() || menus_.isOpen());
    if (leftovers && reportLeftovers_) engine_.misuse("the Mac ends with an alert up or a menu open");
    if (!reportLeftovers_) engine_.scheduler.forgiveDeadlocks();
    engine_.journal.mute();
    if (!goesOn_) drain();
    const bool ended = engine_.stop();
    // Nobody destroys a Mac whose main thread has stopped in exit().
    if (ended && hasExited()) engine_.joinOthers();
    return ended;
}

void VirtualMac::launch(std::function<void(Computer&)> main) {
    postToMain([this, main = std::move(main)] { main(computer()); });
}

bool VirtualMac::onMain(Block block) {
    return finish([this](Block inner) { postToMain(std::move(inner)); }, std::move(block), "onMain");
}

bool VirtualMac::onMainQueue(Block block) {
    return finish([this](Block inner) { dispatch_.mainQueue().async(std::move(inner)); }, std::move(block),
                  "onMainQueue");
}

void VirtualMac::runFor(double seconds) {
    const Moment end = later(engine_.scheduler.now(), seconds);
    engine_.scheduler.wait([end] { return Due::at(end); }, Scheduler::Wait::idle);
}

void VirtualMac::runUntil(double time) {
    const Moment end = fromSeconds(time);
    engine_.scheduler.wait([end] { return Due::at(end); }, Scheduler::Wait::idle);
}

bool VirtualMac::runUntilIdle() {
    if (engine_.scheduler.waitUntilIdle(longestIdling)) return true;
    goesOn_ = true;
    engine_.misuse("something goes on and on");
    return false;
}

void VirtualMac::drain() {
    for (int round = 0; round < mostRounds; ++round) {
        if (!runUntilIdle()) return;
        if (hasExited()) {
            if (!engine_.scheduler.releaseStuck()) return;
        } else if (!alerts_.up().empty()) {
            postToMain([this] { alerts_.answerLast(); });
        } else if (menus_.isOpen()) {
            postToMain([this] { menus_.close(); });
        } else if (!engine_.scheduler.releaseStuck()) {
            return;
        }
    }
    engine_.misuse("one alert follows the other without an end");
}

Leftovers VirtualMac::leftovers() const {
    Leftovers leftovers;
    // The system takes everything back.
    if (hasExited()) return leftovers;
    const auto windows = windows_.all();
    leftovers.timers = engine_.mainLoop.timers();
    leftovers.observers = screens_.observers() + spaces_.observers();
    leftovers.windows = windows.size();
    leftovers.visibleWindows = static_cast<std::size_t>(
        std::count_if(windows.begin(), windows.end(), [](const auto& window) { return window.visible; }));
    leftovers.alerts = alerts_.up().size();
    leftovers.overlays = overlays_.all().size();
    leftovers.keyboardTaps = keyboard_.taps();
    leftovers.statusItems = statusBar_.items().size();
    leftovers.pendingBlocks = engine_.mainLoop.pending();
    leftovers.workers = engine_.scheduler.count(Scheduler::Rank::worker);
    leftovers.requests = network_.underWay();
    leftovers.prompts = capture_.prompts();
    // A client that has quit takes along its threads, requests and prompts, with all that waits in them.
    if (!isRunning() && leftovers.workers + leftovers.requests + leftovers.prompts > 0) return {};
    return leftovers;
}

bool VirtualMac::finish(const std::function<void(Block)>& submit, Block block, const char* what) {
    // Shared: if the block never finishes, it outlives this call.
    const auto done = std::make_shared<bool>(false);
    submit([this, done, block = std::move(block)]() mutable {
        block();
        block = nullptr;
        engine_.scheduler.change([&done] { *done = true; });
    });
    const Moment limit = later(engine_.scheduler.now(), longestIdling);
    engine_.scheduler.waitUnlessIdle([done, limit] { return Due::at(*done ? 0 : limit); });
    if (engine_.scheduler.locked([&done] { return *done; })) return true;
    engine_.misuse(std::string(what) + ": the block does not finish (an alert is up, or the process is over)");
    return false;
}

}  // namespace vantrel::virtualmac
