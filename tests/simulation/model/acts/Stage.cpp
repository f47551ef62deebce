#include "tests/simulation/model/acts/Stage.h"

#include <algorithm>

#include "tests/simulation/model/acts/Part.h"

namespace vantrel::simulation {

Stage::Stage(const Transcript& transcript, const Scenario& scenario, Verdict& verdict)
    : entries_(transcript.entries()), scenario_(scenario), verdict_(verdict), world_(scenario) {
    for (const Entry& entry : entries_) {
        if (entry.is("end")) endsAt_ = entry.at;
    }
}

bool Stage::isMain(const Entry& entry) const {
    const Part part = partOf(entry);
    if (part == Part::turn) return true;
    if (part != Part::main) return false;
    return !isOfPlatform(entries_, entry) && !backstage_->claims(entry);
}

void Stage::closeMomentsBefore(std::int64_t at) {
    if (at <= moment_) return;
    const std::string_view rule = rule_;
    backstage_->momentEnds(moment_, at);
    rule_ = rule;
    moment_ = at;
}

const Entry* Stage::peek() {
    while (!departed_ && cursor_ < entries_.size()) {
        const Entry& entry = entries_[cursor_];
        closeMomentsBefore(entry.at);
        if (departed_) return nullptr;
        if (isMain(entry)) return &entry;
        if (fed_ <= cursor_) {
            fed_ = cursor_ + 1;
            const std::string_view rule = rule_;
            world_.see(entry);
            backstage_->see(entry);
            rule_ = rule;
        }
        ++cursor_;
    }
    return nullptr;
}

void Stage::take(const Entry& entry) {
    now_ = entry.at;
    world_.see(entry);
    if (entry.is("request")) backstage_->sent(entry);
    ++cursor_;
}

const Entry* Stage::next() {
    const Entry* next = peek();
    while (next != nullptr && partOf(*next) == Part::turn) {
        if (next->at > now_ && !strange()) return nullptr;
        turns_.push_back(next);
        ++cursor_;
        next = peek();
    }
    return next != nullptr && (next->at == now_ || strange()) ? next : nullptr;
}

const Entry* Stage::accept(std::string_view kind, std::string_view text) {
    const Entry* const entry = next();
    if (entry == nullptr || !entry->is(kind, text)) return nullptr;
    take(*entry);
    return entry;
}

const Entry* Stage::acceptBeginning(std::string_view kind, std::string_view text) {
    const Entry* const entry = next();
    if (entry == nullptr || !entry->begins(kind, text)) return nullptr;
    take(*entry);
    return entry;
}

const Entry* Stage::expect(std::string_view kind, std::string_view text) {
    const Entry* const found = accept(kind, text);
    if (found == nullptr) departAtNext("expected: " + std::string(kind) + " " + std::string(text));
    return found;
}

const Entry* Stage::expectBeginning(std::string_view kind, std::string_view text) {
    const Entry* const found = acceptBeginning(kind, text);
    if (found == nullptr) departAtNext("expected: " + std::string(kind) + " " + std::string(text) + "…");
    return found;
}

void Stage::depart(std::size_t line, std::string why) {
    if (departed_) return;
    departed_ = true;
    verdict_.turnTo(rule_);
    verdict_.object(line, std::move(why));
}

void Stage::departAtNext(std::string why) {
    const Entry* const next = peek();
    // The run is over before it could come.
    if (next == nullptr && (endsAt_ <= now_ || strange())) return giveUp();
    depart(next != nullptr ? next->line : 0, std::move(why));
}

std::optional<Due> Stage::claim(Deed deed) {
    const auto fits = [&](const Due& due) {
        if (due.deed != deed || due.at > now_) return false;
        return due.at == now_ || strange();
    };
    auto found = std::find_if(dues_.begin(), dues_.end(), [&](const Due& due) { return due.sure && fits(due); });
    if (found == dues_.end()) found = std::find_if(dues_.begin(), dues_.end(), fits);
    if (found == dues_.end()) return std::nullopt;
    Due due = std::move(*found);
    dues_.erase(found);
    return due;
}

bool Stage::isDue(Deed deed) const {
    return std::any_of(dues_.begin(), dues_.end(), [&](const Due& due) { return due.deed == deed; });
}

void Stage::drop(Deed deed) {
    std::erase_if(dues_, [&](const Due& due) { return due.deed == deed; });
}

void Stage::hold(bool queue) {
    if (held_++ == 0) heldSince_ = now_;
    if (queue) ++queueHeld_;
}

void Stage::release(bool queue) {
    --held_;
    if (queue) --queueHeld_;
    if (held_ == 0) freeSince_ = now_;
    for (Due& due : dues_) {
        if (!blocks(due.way)) due.at = std::max(due.at, now_);
    }
}

void Stage::beBusy(bool busy) {
    busy_ = busy;
    if (busy) return;
    freeSince_ = now_;
    for (Due& due : dues_) {
        if (!blocks(due.way)) due.at = std::max(due.at, now_);
    }
}

}  // namespace vantrel::simulation
