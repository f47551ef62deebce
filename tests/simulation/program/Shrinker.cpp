#include "tests/simulation/program/Shrinker.h"

#include <algorithm>
#include <utility>

namespace vantrel::simulation {

WrittenClass Shrinker::shrink(WrittenClass written) {
    best_ = std::move(written);
    std::stable_sort(best_.timeline.begin(), best_.timeline.end(),
                     [](const auto& a, const auto& b) { return a.at < b.at; });
    for (bool isShorter = true; isShorter && left_ > 0;) {
        isShorter = shortenEnd();
        isShorter |= leaveOut(&WrittenClass::timeline);
        isShorter |= splitMoments();
        for (auto pieces :
             {&WrittenClass::replies, &WrittenClass::mac, &WrittenClass::server, &WrittenClass::applications,
              &WrittenClass::browsers, &WrittenClass::displays, &WrittenClass::sessions}) {
            isShorter |= leaveOut(pieces);
        }
        isShorter |= shortenPauses();
    }
    return best_;
}

bool Shrinker::take(const WrittenClass& candidate) {
    if (left_-- <= 0 || !isOfInterest_(candidate)) return false;
    best_ = candidate;
    return true;
}

/// First half of them at once, then fewer and fewer.
template <class Piece>
bool Shrinker::leaveOut(std::vector<Piece> WrittenClass::*pieces) {
    bool isShorter = false;
    for (auto size = std::max<std::size_t>(1, (best_.*pieces).size() / 2); size > 0; size /= 2) {
        for (std::size_t place = 0; place < (best_.*pieces).size();) {
            auto candidate = best_;
            auto& list = candidate.*pieces;
            const auto first = list.begin() + static_cast<long>(place);
            list.erase(first, first + static_cast<long>(std::min(size, list.size() - place)));
            if (take(candidate)) {
                isShorter = true;
            } else {
                place += size;
            }
        }
    }
    return isShorter;
}

/// One action less of those that begin at once.
bool Shrinker::splitMoments() {
    bool isShorter = false;
    for (std::size_t place = 0; place < best_.timeline.size(); ++place) {
        for (std::size_t action = 0;
             best_.timeline[place].actions.size() > 1 && action < best_.timeline[place].actions.size();) {
            auto candidate = best_;
            auto& actions = candidate.timeline[place].actions;
            actions.erase(actions.begin() + static_cast<long>(action));
            if (take(candidate)) {
                isShorter = true;
            } else {
                ++action;
            }
        }
    }
    return isShorter;
}

/// What follows a pause comes earlier: at once, or after whole seconds.
bool Shrinker::shortenPauses() {
    bool isShorter = false;
    for (std::size_t place = 0; place < best_.timeline.size(); ++place) {
        const Milliseconds before = place == 0 ? 0 : best_.timeline[place - 1].at;
        const Milliseconds pause = best_.timeline[place].at - before;
        for (const Milliseconds shorter : {Milliseconds(0), pause / 4, pause / 2, pause * 3 / 4}) {
            const Milliseconds whole = shorter - shorter % 1'000;
            if (whole >= pause || (whole == 0 && shorter != 0)) continue;
            auto candidate = best_;
            for (auto later = place; later < candidate.timeline.size(); ++later) {
                candidate.timeline[later].at -= pause - whole;
            }
            candidate.until -= pause - whole;
            if (!take(candidate)) continue;
            isShorter = true;
            break;
        }
    }
    return isShorter;
}

bool Shrinker::shortenEnd() {
    const Milliseconds last = best_.timeline.empty() ? 0 : best_.timeline.back().at;
    for (const Milliseconds after : {Milliseconds(0), Milliseconds(1'000), (best_.until - last) / 2}) {
        if (last + after >= best_.until) continue;
        auto candidate = best_;
        candidate.until = last + after;
        if (take(candidate)) return true;
    }
    return false;
}

}  // namespace vantrel::simulation
