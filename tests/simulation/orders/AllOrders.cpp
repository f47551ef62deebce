#include "tests/simulation/orders/AllOrders.h"

namespace vantrel::simulation {

AllOrders::Count AllOrders::explore(const std::function<void(const Choices&, const std::string&)>& judge) {
    judge_ = judge;
    count_ = {};
    seen_.clear();
    explore({}, nullptr);
    count_.transcripts = seen_.size();
    return count_;
}

void AllOrders::explore(const Choices& choices, const Rest* parent) {
    if (count_.orders >= most_) {
        count_.complete = false;
        return;
    }
    ++count_.orders;
    const auto played = play_(choices);
    if (seen_.insert(played.transcript).second) judge_(choices, played.transcript);
    const Rest rest{played.transcript,
                    {played.alternatives.begin() + static_cast<long>(choices.size()), played.alternatives.end()}};
    if (parent && rest == *parent) {
        ++count_.reduced;
        return;
    }
    // The last choice first, so that what two orders share is long.
    for (auto place = played.alternatives.size(); place-- > choices.size();) {
        auto changed = choices;
        changed.resize(place, 0);
        const Rest from{played.transcript,
                        {played.alternatives.begin() + static_cast<long>(place) + 1, played.alternatives.end()}};
        changed.push_back(0);
        while (++changed.back() < played.alternatives[place]) explore(changed, &from);
    }
}

}  // namespace vantrel::simulation
