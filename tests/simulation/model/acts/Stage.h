#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/acts/Client.h"
#include "tests/simulation/model/acts/Due.h"
#include "tests/simulation/model/reading/Scenario.h"
#include "tests/simulation/model/reading/Transcript.h"
#include "tests/simulation/model/world/World.h"

namespace vantrel::simulation {

/// What happens besides the main thread. Told of every entry that is not the main thread's, and of every moment that is
/// over.
class Backstage {
  public:
    Backstage() = default;
    Backstage(const Backstage&) = delete;
    Backstage& operator=(const Backstage&) = delete;
    virtual ~Backstage() = default;
    virtual void see(const Entry& entry) = 0;
    virtual void momentEnds(std::int64_t at, std::int64_t next) = 0;

    /// Whether an entry that could be the main thread's is one of these.
    virtual bool claims(const Entry& entry) const = 0;
    virtual void sent(const Entry& request) = 0;
    /// A tap on the join button sends a join on its way.
    virtual void joinBegins() = 0;
    /// Its result has come.
    virtual void joinIsOver() = 0;
    /// An activation waits for so many permission prompts, and then launches the browser.
    virtual void launchBegins(int prompts) = 0;
    /// A kill of the browser begins beside the main thread.
    virtual void killBegins() = 0;
};

/// The lines of the main thread in their order, and what is due there. After the first departure from the rules nothing
/// is judged any more, and every reading comes back empty.
class Stage {
  public:
    Stage(const Transcript& transcript, const Scenario& scenario, Verdict& verdict);
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    Backstage& backstage() { return *backstage_; }
    void setBackstage(Backstage& backstage) { backstage_ = &backstage; }

    // The lines. A rule's name is that of what is being read.
    void turnTo(std::string_view rule) { rule_ = rule; }
    std::string_view rule() const { return rule_; }
    const Entry* peek();  // none at the end
    void skip() { ++cursor_; }
    /// The entry behind this one; none behind the last.
    const Entry* following(const Entry& entry) const { return &entry == &entries_.back() ? nullptr : &entry + 1; }
    std::int64_t now() const { return now_; }
    /// The next line, if it is this one and of this moment.
    const Entry* accept(std::string_view kind, std::string_view text);
    const Entry* acceptBeginning(std::string_view kind, std::string_view text);
    const Entry* expect(std::string_view kind, std::string_view text);
    const Entry* expectBeginning(std::string_view kind, std::string_view text);
    void expectLog(std::string_view text) { expect("log", text); }
    /// Takes the line whatever it is; its moment becomes now.
    void take(const Entry& entry);
    /// The next line is waited for until then; it comes at a moment of its own.
    void waitTo(std::int64_t at) { now_ = at; }

    void depart(std::size_t line, std::string why);
    void departAtNext(std::string why);
    bool departed() const { return departed_; }
    /// What follows cannot be judged; ends the reading without a complaint.
    void giveUp() { departed_ = true; }

    /// Answers and menus that came while the main thread was at something else.
    std::vector<const Entry*>& turns() { return turns_; }
    const std::vector<const Entry*>& turns() const { return turns_; }

    // What is due.
    void add(Due due) { dues_.push_back(std::move(due)); }
    /// The due deed for a line that comes now.
    std::optional<Due> claim(Deed deed);
    bool isDue(Deed deed) const;
    void drop(Deed deed);
    std::vector<Due>& dues() { return dues_; }

    // What holds the main thread up.
    void hold(bool queue);
    void release(bool queue);
    void beBusy(bool busy);
    bool isHeld() const { return held_ > 0; }
    bool isQueueHeld() const { return queueHeld_ > 0; }
    bool isBusy() const { return busy_; }
    std::int64_t heldSince() const { return heldSince_; }
    /// When the timers went on after what had held them up last.
    std::int64_t freeSince() const { return freeSince_; }
    bool blocks(Way way) const {
        return busy_ || (way == Way::queue && queueHeld_ > 0) || (way == Way::timer && held_ > 0);
    }

    const Scenario& scenario() const { return scenario_; }
    World& world() { return world_; }
    Client& client() { return client_; }
    std::int64_t moment() const { return moment_; }
    bool strange() const { return world_.strange(moment_); }
    /// Seconds since 1970 at a moment of the run.
    std::int64_t calendarAt(std::int64_t at) const { return scenario_.calendar + (at + world_.lidClosed()) / 1000; }

  private:
    bool isMain(const Entry& entry) const;
    void closeMomentsBefore(std::int64_t at);
    /// The next line of this moment; turns before it are put aside.
    const Entry* next();

    const std::vector<Entry>& entries_;
    const Scenario& scenario_;
    Verdict& verdict_;
    Backstage* backstage_ = nullptr;
    World world_;
    Client client_;
    std::vector<Due> dues_;
    std::vector<const Entry*> turns_;
    std::size_t cursor_ = 0;
    std::size_t fed_ = 0;  // entries that the world has seen
    std::int64_t now_ = 0;
    std::int64_t moment_ = 0;
    std::int64_t endsAt_ = 0;
    std::string_view rule_ = "every line has its place";
    int held_ = 0;
    int queueHeld_ = 0;
    std::int64_t heldSince_ = -1;
    std::int64_t freeSince_ = -1;
    bool busy_ = false;
    bool departed_ = false;
};

}  // namespace vantrel::simulation
