#include "tests/simulation/model/world/World.h"

#include <algorithm>
#include <cstdlib>

#include "tests/simulation/model/reading/Words.h"

namespace vantrel::simulation {
namespace {

/// What a change may still set off after it is over.
constexpr std::int64_t aftermath = 12000;
constexpr std::int64_t ownPid = 500;
constexpr std::int64_t comesLate = 2000;

double numberOf(const std::string& text) {
    return std::strtod(text.c_str(), nullptr);
}

}  // namespace

World::World(const Scenario& scenario) : lateFront_(scenario.lateFront), comesWhenAsked_(scenario.comesWhenAsked) {
    for (const auto& row : scenario.displays) {
        if (row.size() == 5) {
            displays_.push_back({row[0], numberOf(row[1]), numberOf(row[2]), numberOf(row[3]), numberOf(row[4])});
        }
    }
}

bool readNamedProcess(std::string_view text, NamedProcess& named) {
    for (std::size_t at = text.find('('); at != std::string_view::npos; at = text.find('(', at + 1)) {
        Words words(text.substr(at + 1));
        const auto pid = words.integer();
        if (!pid || !words.skip(")") || (!words.atEnd() && words.rest().front() != ' ')) continue;
        named.name = text.substr(0, at == 0 ? 0 : at - 1);
        named.pid = *pid;
        named.rest = words.atEnd() ? words.rest() : words.rest().substr(1);
        return true;
    }
    return false;
}

void World::see(const Entry& entry) {
    if (entry.is("client", "asks to come to the front")) {
        if (lateFront_) comesAt_ = entry.at + comesLate;
        if (comesWhenAsked_ && front_ != ownPid) comesAt_ = entry.at;
    }
    if (comesAt_ >= 0 && entry.at >= comesAt_) {
        comesAt_ = -1;
        front_ = 0;
    }
    if (entry.is("application")) seeApplication(entry);
    if (entry.is("process")) seeProcess(entry);
    if (entry.is("app window")) seeWindow(entry);
    if (entry.is("displays")) seeDisplays(entry);
    if (entry.is("space")) seeSpace(entry);
    if (entry.is("fault")) seeFault(entry);
    // A program that is launched is in front.
    if (entry.is("client", "has activation policy 0")) comeToFront(ownPid, "Vantrel", entry.at);
    if (entry.is("lid")) {
        Words words(entry.text);
        words.skip("is closed for ");
        if (const auto seconds = words.number()) lidClosed_ += static_cast<std::int64_t>(*seconds * 1000 + 0.5);
        strangeUntil_ = std::max(strangeUntil_, entry.at + aftermath);
    }
}

void World::seeApplication(const Entry& entry) {
    NamedProcess named;
    if (!readNamedProcess(entry.text, named)) return;
    if (named.rest == "starts") {
        processes_[named.pid] = {named.name, true, false, entry.at};
    } else if (named.rest == "exits") {
        Process& process = processes_[named.pid];
        process.exited = true;
        process.changed = entry.at;
        if (front_ == named.pid) front_ = 0;
        ownGone_ = ownGone_ || named.pid == ownPid;
    } else if (named.rest == "is in front") {
        comeToFront(named.pid, named.name, entry.at);
    }
}

void World::comeToFront(std::int64_t pid, std::string_view name, std::int64_t at) {
    // A client whose process was killed plays on, but is no running application.
    if (pid == ownPid && ownGone_) return;
    frontBefore_ = frontSince_ == at ? frontBefore_ : frontName_;
    frontSince_ = at;
    front_ = pid;
    frontName_ = name;
    if (pid != ownPid) lastOther_ = pid;
}

void World::seeProcess(const Entry& entry) {
    NamedProcess named;
    if (!readNamedProcess(entry.text, named)) return;
    if (named.rest == "is started") {
        const std::size_t slash = named.name.rfind('/');
        processes_[named.pid] = {slash == std::string_view::npos ? named.name : named.name.substr(slash + 1), false,
                                 false, entry.at};
    } else if (named.rest == "exits") {
        processes_[named.pid].exited = true;
        processes_[named.pid].changed = entry.at;
    }
}

void World::seeWindow(const Entry& entry) {
    Words words(entry.text);
    if (!words.skip("#")) return;
    const auto number = words.integer();
    const std::size_t quote = words.rest().rfind('"');
    if (!number || quote == std::string_view::npos) return;
    AppWindow& window = windows_[*number];
    window.title = words.rest().substr(2, quote < 2 ? 0 : quote - 2);
    window.changed = entry.at;
    Words verb(words.rest().substr(quote + 1));
    if (verb.skip(" closes")) window.closed = true;
    if (verb.skip(" is minimised")) window.minimised = true;
    if (verb.skip(" is restored")) window.minimised = false;
    const bool inFull = verb.skip(" is in full screen at ");
    const bool left = verb.skip(" has left full screen at ");
    if (inFull) window.fullScreen = true;
    if (left) window.fullScreen = false;
    if (!inFull && !left && !verb.skip(" opens at ") && !verb.skip(" is now at ")) return;
    window.moved = inFull && window.shaken;
    window.follows = window.entering = window.shaken = false;
    for (double* value : {&window.x, &window.y, &window.width, &window.height}) {
        *value = verb.number().value_or(0);
        verb.skip(" ");
    }
}

void World::seeSpace(const Entry& entry) {
    constexpr std::string_view full = "full screen of ";
    const std::size_t at = entry.text.find(full);
    if (at == std::string_view::npos) return;
    for (auto& each : windows_) {
        AppWindow& window = each.second;
        if (!window.fullScreen && window.title == entry.text.substr(at + full.size())) window.entering = true;
    }
}

void World::seeDisplays(const Entry& entry) {
    if (entry.text != "are now") return;
    displays_.clear();
    for (const std::string_view line : entry.further) {
        std::string_view rest = line;
        std::vector<double> values;
        for (int count = 0; count < 4; ++count) {
            const std::size_t space = rest.rfind(' ');
            if (space == std::string_view::npos) return;
            values.push_back(Words(rest.substr(space + 1)).number().value_or(0));
            rest = rest.substr(0, space);
        }
        displays_.push_back({std::string(rest), values[3], values[2], values[1], values[0]});
    }
    followDisplays(entry.at);
}

/// A full screen whose display has gone or has another size now fills one that there is. No line tells of it.
void World::followDisplays(std::int64_t at) {
    for (auto& entry : windows_) {
        auto& window = entry.second;
        window.shaken = window.shaken || window.entering;
        if (!window.fullScreen || window.closed) continue;
        const bool fills = std::any_of(displays_.begin(), displays_.end(), [&](const Display& display) {
            return display.width == window.width && display.height == window.height;
        });
        if (fills && !window.moved) continue;
        window.moved = true;
        window.changed = at;
        window.follows = displays_.size() != 1;
        if (window.follows) continue;
        window.width = displays_.front().width;
        window.height = displays_.front().height;
    }
}

void World::seeFault(const Entry& entry) {
    constexpr std::string_view falls = " does not answer";
    constexpr std::string_view recovers = " answers again";
    if (entry.text.ends_with(falls)) silent_.insert(entry.text.substr(0, entry.text.size() - falls.size()));
    if (entry.text.ends_with(recovers)) {
        silent_.erase(entry.text.substr(0, entry.text.size() - recovers.size()));
        strangeUntil_ = std::max(strangeUntil_, entry.at + aftermath);
    }
    Words words(entry.text);
    if (words.skip("the client's main thread hangs for ")) {
        const double seconds = words.number().value_or(0);
        hangsUntil_ = std::max(hangsUntil_, entry.at) + static_cast<std::int64_t>(seconds * 1000 + 0.5);
        strangeUntil_ = std::max(strangeUntil_, hangsUntil_ + aftermath);
    }
    failsBodies_ = failsBodies_ || entry.text.starts_with("JSON serialisations");
    failsAddresses_ = failsAddresses_ || entry.text.starts_with("no URL is formed");
    for (const std::string_view beginning :
         {"reads of ", "writes of ", "actions ", "the window list cannot", "JSON serialisations", "no URL is formed"}) {
        if (entry.text.starts_with(beginning)) bent_ = true;
    }
}

const Process* World::process(std::int64_t pid) const {
    const auto found = processes_.find(pid);
    return found == processes_.end() ? nullptr : &found->second;
}

bool World::mayRun(std::int64_t pid, std::int64_t at) const {
    const Process* const known = process(pid);
    return known != nullptr && known->application && (!known->exited || known->changed == at);
}

bool World::surelyRuns(std::int64_t pid, std::int64_t at) const {
    const Process* const known = process(pid);
    return known != nullptr && known->application && !known->exited && known->changed != at;
}

bool World::mayRun(std::string_view name, std::int64_t at) const {
    for (const auto& [pid, process] : processes_) {
        if (process.name == name && mayRun(pid, at)) return true;
    }
    return false;
}

}  // namespace vantrel::simulation
