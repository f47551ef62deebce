// Measures how long the Linux client takes from a browser's launch to its confirmed full screen, without the waits that
// the rules require. Prints one line for each run, in milliseconds. bench/browser_launch.py provides desktop, browser
// and page.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "browser/BrowserLauncher.h"
#include "platform/linux/LinuxComputer.h"

namespace {

using namespace vantrel;
using namespace vantrel::linuxdesktop;
using Stopwatch = std::chrono::steady_clock;

double milliseconds(Stopwatch::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

/// Sleeps like the computer and adds up the requested times.
class CountedSleeps final : public Threads {
  public:
    explicit CountedSleeps(Threads& threads) : threads_(threads) {}

    bool isMainThread() const override { return threads_.isMainThread(); }
    void sleep(double seconds) override {
        asked_ = asked_ + seconds * 1000;
        const auto from = Stopwatch::now();
        threads_.sleep(seconds);
        slept_ = slept_ + milliseconds(Stopwatch::now() - from);
    }

    double asked() const { return asked_; }
    double slept() const { return slept_; }

  private:
    Threads& threads_;
    std::atomic<double> asked_ = 0;
    std::atomic<double> slept_ = 0;
};

/// Prints nothing: a run's output is one line.
class Silence final : public Log {
  public:
    void print(std::string_view) override {}
};

std::shared_ptr<AccessibilityElement> firstWindow(Computer& computer, ProcessIdentifier process) {
    using Elements = std::vector<std::shared_ptr<AccessibilityElement>>;
    const auto answer = computer.accessibility.application(process)->attribute("AXWindows");
    const auto* value = std::get_if<AccessibilityValue>(&answer);
    const auto* windows = value != nullptr ? std::get_if<Elements>(value) : nullptr;
    return windows != nullptr && !windows->empty() ? windows->front() : nullptr;
}

bool fills(const Size& screen, Computer& computer, ProcessIdentifier process) {
    const auto window = firstWindow(computer, process);
    if (!window) return false;
    const auto answer = window->attribute("AXSize");
    const auto* value = std::get_if<AccessibilityValue>(&answer);
    const auto* size = value != nullptr ? std::get_if<Size>(value) : nullptr;
    return size != nullptr && *size == screen;
}

/// Ends the browser on the main thread, like the end of a session.
void close(LinuxComputer& desktop, const std::shared_ptr<BrowserLauncher>& launcher) {
    std::promise<void> closed;
    desktop.postEvent([&] {
        launcher->closeBrowser();
        closed.set_value();
    });
    closed.get_future().wait();
}

/// Runs on a second thread while the main thread turns the event loop. False if the browser did not reach full screen.
bool measure(LinuxComputer& desktop, const Size& screen, const std::string& address, int runs) {
    constexpr auto longest = std::chrono::seconds(30);
    Computer computer = desktop.computer();
    std::printf("run   total   waits demanded   ours   of which waits came late   screen filled after\n");
    for (int run = 1; run <= runs; ++run) {
        CountedSleeps sleeps(computer.threads);
        Silence silence;
        const auto launcher = std::make_shared<BrowserLauncher>(BrowserLauncher::Dependencies{
            computer.files, computer.processLauncher, computer.runningApplications, computer.applicationOpener,
            computer.windowList, computer.accessibility, computer.screens, computer.urls, computer.dispatch,
            computer.mainRunLoop, sleeps, computer.clock, silence});

        const auto from = Stopwatch::now();
        launcher->launch(address);
        while (!launcher->isConfirmedFullscreen() && Stopwatch::now() - from < longest) {
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
        const auto confirmed = Stopwatch::now();
        const auto process = launcher->browserPID();
        if (!process || !launcher->isConfirmedFullscreen()) return false;
        while (!fills(screen, computer, *process) && Stopwatch::now() - from < longest) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        const double total = milliseconds(confirmed - from);
        std::printf("%3d %7.1f   %14.1f %6.1f   %24.1f   %19.1f\n", run, total, sleeps.asked(), total - sleeps.asked(),
                    sleeps.slept() - sleeps.asked(), milliseconds(Stopwatch::now() - confirmed));
        std::fflush(stdout);
        close(desktop, launcher);
    }
    return true;
}

class Measuring final : public ApplicationDelegate {
  public:
    explicit Measuring(std::function<void()> start) : start_(std::move(start)) {}
    void applicationDidFinishLaunching() override { start_(); }
    TerminateReply applicationShouldTerminate() override { return TerminateReply::now; }

  private:
    const std::function<void()> start_;
};

}  // namespace

int main(int argc, char** argv) {
    constexpr int runs = 10;
    NoComputer reason{};
    const auto desktop = argc == 2 ? LinuxComputer::create({}, reason) : nullptr;
    if (!desktop) {
        std::fputs("usage, on an X11 display: browser-launch ADDRESS; or bench/browser_launch.py\n", stderr);
        return EXIT_FAILURE;
    }
    const auto screen = desktop->computer().screens.mainScreen();
    if (!screen) return EXIT_FAILURE;
    bool reached = false;
    std::thread thread;
    Application& application = desktop->computer().application;
    const auto delegate = std::make_shared<Measuring>([&] {
        thread = std::thread([&] {
            reached = measure(*desktop, screen->frame.size, argv[1], runs);
            desktop->postEvent([&application] { application.terminate(); });
        });
    });
    application.setDelegate(delegate);
    application.run();
    thread.join();
    if (!reached) std::fputs("The browser did not come to full screen.\n", stderr);
    return reached ? EXIT_SUCCESS : EXIT_FAILURE;
}
