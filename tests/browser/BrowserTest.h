#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "browser/BrowserLauncher.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {

/// What a window monitor hears of the launcher.
class ConfirmationListener final : public FullscreenObserver {
  public:
    void setFullscreenConfirmed(bool confirmed) override { this->confirmed = confirmed; }

    bool confirmed = false;
};

/// A launcher on a virtual Mac of its own, on which no browser but Safari is installed at first.
class BrowserTest : public virtualmac::MacTest {
  protected:
    static constexpr const char* meeting = "https://meet.example/abc";

    void TearDown() override;

    void install(const char* path, virtualmac::InstalledApplication application);
    /// A Chrome as it comes, unless it is changed.
    void installChrome(const std::function<void(virtualmac::InstalledApplication&)>& change = {});
    /// Chrome runs already, with one window; its process.
    ProcessIdentifier startChrome();

    /// Makes the launcher, with a window monitor attached if it is asked for.
    void make(bool withMonitor = false, BrowserLauncher::Detection detect = detectSupportedBrowser);
    /// Makes it unless there is one and starts the launch on a background thread; returns at once.
    void launch(const std::string& meetURL = meeting);
    /// On the main thread.
    void attempt();
    void close();
    /// Drops the test's reference, on the main thread.
    void release();
    /// From now on the main thread is busy for so many seconds; returns at once.
    void keepMainBusy(double seconds);
    /// The same, and then it drops the test's reference before it does anything else.
    void keepMainBusyAndRelease(double seconds);
    BrowserLauncher& launcher() { return *launcher_; }
    const std::shared_ptr<BrowserLauncher>& sharedLauncher() { return launcher_; }
    bool isAlive() const { return !weak_.expired(); }
    const ConfirmationListener& monitor() const { return *monitor_; }

    /// When the line was logged for the first time; negative when it was not.
    double timeOf(std::string_view line) const;
    /// When something of that kind happened, each time.
    std::vector<double> timesOf(std::string_view kind) const;
    /// With which options applications were asked to come to the front, each time.
    std::vector<std::string> activationOptions() const;
    std::size_t count(std::string_view line) const;
    bool logged(std::string_view line) const { return count(line) > 0; }
    /// The logged lines that begin with the tag.
    std::vector<std::string> lines(std::string_view tag) const;
    bool isRunning(ProcessIdentifier process);

  private:
    std::shared_ptr<BrowserLauncher> launcher_;
    std::weak_ptr<BrowserLauncher> weak_;
    std::shared_ptr<ConfirmationListener> monitor_;
};

}  // namespace vantrel
