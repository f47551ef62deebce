#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "browser/BrowserLauncher.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {

/// What the launcher tells a window monitor.
class ConfirmationListener final : public FullscreenObserver {
  public:
    void setFullscreenConfirmed(bool confirmed) override { this->confirmed = confirmed; }

    bool confirmed = false;
};

/// A launcher on its own virtual Mac, on which at first no browser but Safari is installed.
class BrowserTest : public virtualmac::MacTest {
  protected:
    static constexpr const char* meeting = "https://meet.example/abc";

    void TearDown() override;

    void install(const char* path, virtualmac::InstalledApplication application);
    /// Chrome with its default behaviour, unless `change` changes it.
    void installChrome(const std::function<void(virtualmac::InstalledApplication&)>& change = {});
    /// Starts Chrome with one window, before the launch. Returns its process.
    ProcessIdentifier startChrome();

    /// Creates the launcher, with a window monitor attached if requested.
    void make(bool withMonitor = false, BrowserLauncher::Detection detect = detectSupportedBrowser);
    /// Creates the launcher if there is none and starts the launch on a background thread. Returns at once.
    void launch(const std::string& meetURL = meeting);
    /// On the main thread.
    void attempt();
    void close();
    /// Drops the test's reference, on the main thread.
    void release();
    /// Makes the main thread busy for `seconds` from now on. Returns at once.
    void keepMainBusy(double seconds);
    /// The same; then, before anything else runs, it drops the test's reference.
    void keepMainBusyAndRelease(double seconds);
    BrowserLauncher& launcher() { return *launcher_; }
    const std::shared_ptr<BrowserLauncher>& sharedLauncher() { return launcher_; }
    bool isAlive() const { return !weak_.expired(); }
    const ConfirmationListener& monitor() const { return *monitor_; }

    /// When the line was first logged. Negative if it was not.
    double timeOf(std::string_view line) const;
    /// The times of all events of that kind.
    std::vector<double> timesOf(const EventKind& kind) const;
    /// The options of all requests to activate an application.
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
