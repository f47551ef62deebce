#include "tests/simulation/classes/RandomMoments.h"

#include <algorithm>

namespace vantrel::simulation {

Milliseconds RandomMoments::next() {
    if (!drawn_.empty() && numbers_.chance(18)) return numbers_.pick(drawn_);
    drawn_.push_back(std::clamp(draw(), span_.from, span_.to));
    return drawn_.back();
}

Milliseconds RandomMoments::draw() {
    constexpr Milliseconds tick = 1'500;
    constexpr Milliseconds cover = 3'000;
    constexpr Milliseconds heartbeat = 15'000;
    switch (numbers_.below(10)) {
        case 0:
        case 1:
            return onGrid(tick);
        case 2:
            return onGrid(tick) + numbers_.from(-1, 1) * 10;
        case 3:
            return onGrid(cover);
        case 4:
            return onGrid(heartbeat);
        case 5:
            return onGrid(heartbeat) + latency_;
        default:
            return numbers_.moment(span_.from, span_.to);
    }
}

Milliseconds RandomMoments::onGrid(Milliseconds interval) {
    return span_.from + numbers_.from(0, (span_.to - span_.from) / interval) * interval;
}

}  // namespace vantrel::simulation
