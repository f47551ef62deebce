#include "tests/simulation/orders/ChoiceSequence.h"

namespace vantrel::simulation {

std::size_t ChoiceSequence::choose(std::size_t count, virtualmac::Moment now) {
    return isInside(now) ? take(count) : 0;
}

std::size_t ChoiceSequence::interrupt(std::size_t others, virtualmac::Moment now) {
    if (!isInside(now) || interruptions_ >= span_.interruptions) return 0;
    const auto chosen = take(others + 1);
    if (chosen != 0) ++interruptions_;
    return chosen;
}

std::size_t ChoiceSequence::take(std::size_t count) {
    const auto place = alternatives_.size();
    alternatives_.push_back(count);
    return place < choices_.size() ? choices_[place] : 0;
}

}  // namespace vantrel::simulation
