#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/simulation/model/reading/Entry.h"
#include "tests/simulation/model/reading/Scenario.h"

namespace vantrel::simulation {

struct Process {
    std::string_view name;
    bool application = false;  // one of the running applications
    bool exited = false;
    std::int64_t changed = 0;  // when that became so
};

struct AppWindow {
    std::string_view title;
    double x = 0, y = 0, width = 0, height = 0;
    bool fullScreen = false;
    bool minimised = false;
    bool closed = false;
    bool moved = false;     // its display has gone, or got another size
    bool follows = false;   // and which one it fills now is not known
    bool entering = false;  // on its way to full screen
    bool shaken = false;    // and the displays have changed on that way
    std::int64_t changed = 0;
};

struct Display {
    std::string name;
    double x = 0, y = 0, width = 0, height = 0;
};

/// The Mac around the client, as far as a transcript tells of it.
class World {
  public:
    explicit World(const Scenario& scenario);

    void see(const Entry& entry);

    const Process* process(std::int64_t pid) const;
    /// Whether the process is an application that runs, or did until this very moment.
    bool mayRun(std::int64_t pid, std::int64_t at) const;
    bool surelyRuns(std::int64_t pid, std::int64_t at) const;
    /// Whether an application of that name runs, or did until this very moment.
    bool mayRun(std::string_view name, std::int64_t at) const;

    std::string_view frontName() const { return frontName_; }
    /// Who was in front when this moment began, if that has changed in it.
    std::string_view frontBefore(std::int64_t at) const { return frontSince_ == at ? frontBefore_ : frontName_; }
    std::int64_t front() const { return front_; }  // 0 if it is not known
    /// The one that was last in front besides the client; 0 if it is not known.
    std::int64_t lastOther() const { return lastOther_; }
    std::map<std::int64_t, AppWindow>& windows() { return windows_; }
    const std::map<std::int64_t, AppWindow>& windows() const { return windows_; }
    const std::map<std::int64_t, Process>& processes() const { return processes_; }
    const std::vector<Display>& displays() const { return displays_; }
    /// True while the world does things whose times the model does not foresee: an application that does not answer, a
    /// client that hangs.
    bool strange(std::int64_t at) const { return !silent_.empty() || at <= strangeUntil_; }
    std::int64_t hangsUntil() const { return hangsUntil_; }  // the client's main thread
    std::int64_t lidClosed() const { return lidClosed_; }    // milliseconds in all
    bool bent() const { return bent_; }                      // elements, lists or bodies fail by a fault
    bool failsBodies() const { return failsBodies_; }
    bool failsAddresses() const { return failsAddresses_; }
    bool failsRequests() const { return failsBodies_ || failsAddresses_; }

  private:
    void seeApplication(const Entry& entry);
    void comeToFront(std::int64_t pid, std::string_view name, std::int64_t at);
    void seeProcess(const Entry& entry);
    void seeWindow(const Entry& entry);
    void seeDisplays(const Entry& entry);
    void seeSpace(const Entry& entry);
    void followDisplays(std::int64_t at);
    void seeFault(const Entry& entry);

    std::map<std::int64_t, Process> processes_;
    std::map<std::int64_t, AppWindow> windows_;
    std::vector<Display> displays_;
    std::int64_t front_ = 0;
    std::int64_t lastOther_ = 0;
    bool lateFront_ = false;
    bool comesWhenAsked_ = false;
    bool ownGone_ = false;
    std::int64_t comesAt_ = -1;  // the client, without a line; -1 for never
    std::string_view frontName_, frontBefore_;
    std::int64_t frontSince_ = -1;
    std::set<std::string_view> silent_;
    std::int64_t strangeUntil_ = -1;
    std::int64_t hangsUntil_ = -1;
    std::int64_t lidClosed_ = 0;
    bool bent_ = false;
    bool failsBodies_ = false;
    bool failsAddresses_ = false;
};

/// "NAME (PID) rest": the number and the rest; the name may hold brackets of its own.
struct NamedProcess {
    std::string_view name;
    std::int64_t pid = 0;
    std::string_view rest;
};
bool readNamedProcess(std::string_view text, NamedProcess& named);

}  // namespace vantrel::simulation
