#include "tests/simulation/classes/RandomClass.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/simulation/classes/Plan.h"
#include "tests/simulation/classes/RandomApplications.h"
#include "tests/simulation/classes/RandomEnd.h"
#include "tests/simulation/classes/RandomJoin.h"
#include "tests/simulation/classes/RandomMac.h"
#include "tests/simulation/classes/RandomNumbers.h"
#include "tests/simulation/classes/RandomParticipant.h"
#include "tests/simulation/classes/RandomServer.h"
#include "tests/simulation/classes/RandomWorld.h"

namespace vantrel::simulation {
namespace {

class ClassWriter {
  public:
    explicit ClassWriter(std::uint64_t number) : numbers_(number) {
        written_.title = "Class " + std::to_string(number);
    }

    WrittenClass write() {
        RandomMac(numbers_.branch()).draw(written_, plan_);
        RandomApplications(numbers_.branch()).draw(written_, plan_);
        RandomServer(numbers_.branch()).draw(written_, plan_);
        Milliseconds last = session(numbers_.moment(500, 4'000), true);
        if (numbers_.chance(35)) last = anotherSession(last);
        if (numbers_.chance(25)) last = quit(last);
        gather();
        for (const auto& step : written_.timeline) last = std::max(last, step.at);
        written_.until = last + numbers_.moment(0, 30'000);
        return std::move(written_);
    }

  private:
    /// From the join screen to an end. Returns the moment after which nothing of it is to come.
    Milliseconds session(Milliseconds at, bool isFirst) {
        const auto& code = plan_.codes[isFirst || numbers_.chance(40) ? 0 : 1];
        const Milliseconds from = RandomJoin(numbers_.branch(), written_, plan_).draw(at, code, isFirst);
        RandomEnd end(numbers_.branch(), written_, plan_);
        const Span lockdown{from, from + end.drawDuration()};
        RandomParticipant(numbers_.branch(), written_, plan_).draw(lockdown, howMany(lockdown));
        // The world does not wait for the lockdown.
        const Milliseconds early = numbers_.chance(30) ? 4'000 : 0;
        const Span world{std::max<Milliseconds>(0, from - early), lockdown.to};
        RandomWorld(numbers_.branch(), written_, plan_).draw(world, howMany(world));
        return end.draw(lockdown, code);
    }

    int howMany(Span span) {
        const auto most = std::min<Milliseconds>(12, 2 + (span.to - span.from) / 5'000);
        return numbers_.chance(12) ? 0 : static_cast<int>(numbers_.from(0, most));
    }

    Milliseconds anotherSession(Milliseconds last) {
        const Milliseconds at = last + numbers_.moment(500, 8'000);
        written_.timeline.push_back({at, {"press: Nuova sessione"}});
        return session(at + numbers_.moment(0, 3'000), false);
    }

    Milliseconds quit(Milliseconds last) {
        const std::vector<std::string> ways = {"key: Command-Q", "do: log out", "do: close the window"};
        const Milliseconds at = last + numbers_.moment(0, 10'000);
        written_.timeline.push_back({at, {numbers_.pick(ways)}});
        return at;
    }

    /// Some of what comes at one moment begins at once, so that the seed orders it.
    void gather() {
        std::map<Milliseconds, std::vector<WrittenStep>> moments;
        for (auto& step : written_.timeline) moments[step.at].push_back(std::move(step));
        written_.timeline.clear();
        for (auto& [at, steps] : moments) {
            if (steps.size() > 1 && numbers_.chance(60)) {
                WrittenStep together{at, {}};
                for (auto& step : steps)
                    std::move(step.actions.begin(), step.actions.end(), std::back_inserter(together.actions));
                written_.timeline.push_back(std::move(together));
            } else {
                std::move(steps.begin(), steps.end(), std::back_inserter(written_.timeline));
            }
        }
    }

    RandomNumbers numbers_;
    Plan plan_;
    WrittenClass written_;
};

}  // namespace

WrittenClass randomClass(std::uint64_t number) {
    return ClassWriter(number).write();
}

}  // namespace vantrel::simulation
