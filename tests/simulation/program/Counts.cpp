#include "tests/simulation/program/Counts.h"

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <utility>
#include <vector>

namespace vantrel::simulation {
namespace {

using Row = std::pair<std::string, Count>;

std::string groupOf(const Row& row) {
    return row.first.substr(0, row.first.find(':'));
}

bool comesBefore(const Row& left, const Row& right) {
    const auto group = groupOf(left);
    const auto other = groupOf(right);
    if (group != other) return group < other;
    if (left.second.times != right.second.times) return left.second.times > right.second.times;
    return left.first < right.first;
}

}  // namespace

void add(Counts& all, const Counts& more) {
    for (const auto& [situation, count] : more) {
        auto& sum = all[situation];
        sum.times += count.times;
        sum.inLockdown += count.inLockdown;
        sum.classes += count.classes;
    }
}

std::string table(const Counts& counts) {
    std::vector<Row> rows(counts.begin(), counts.end());
    std::stable_sort(rows.begin(), rows.end(), comesBefore);
    std::ostringstream text;
    text << "     times  in a lockdown    classes  situation\n";
    for (const auto& [situation, count] : rows) {
        text << std::setw(10) << count.times << std::setw(15) << count.inLockdown << std::setw(11) << count.classes
             << "  " << situation << '\n';
    }
    return text.str();
}

}  // namespace vantrel::simulation
