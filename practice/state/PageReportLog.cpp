#include "practice/state/PageReportLog.h"

#include <algorithm>
#include <utility>

namespace vantrel::practice {

void PageReportLog::add(const std::string& code, const PageReportsBody& body, double now) {
    const std::lock_guard lock(mutex_);
    const std::uint64_t page = pageNumber(body.page);
    for (const PageReport& report : body.reports) insert({now, code, page, report});
    while (entries_.size() > reportsKept) entries_.pop_front();
}

void PageReportLog::clear() {
    const std::lock_guard lock(mutex_);
    entries_.clear();
}

std::vector<PageReportLog::Entry> PageReportLog::entries() const {
    const std::lock_guard lock(mutex_);
    return {entries_.begin(), entries_.end()};
}

std::uint64_t PageReportLog::pageNumber(const std::string& name) {
    const auto found = std::find(pages_.begin(), pages_.end(), name);
    if (found != pages_.end()) return forgottenPages_ + static_cast<std::uint64_t>(found - pages_.begin()) + 1;
    pages_.push_back(name);
    if (pages_.size() > pagesKept) {
        pages_.pop_front();
        ++forgottenPages_;
    }
    return forgottenPages_ + pages_.size();
}

void PageReportLog::insert(Entry entry) {
    auto place = entries_.end();
    for (auto earlier = entries_.end(); earlier != entries_.begin();) {
        --earlier;
        if (earlier->page != entry.page) continue;
        if (earlier->report.number == entry.report.number) return;
        if (earlier->report.number < entry.report.number) break;
        place = earlier;
    }
    entries_.insert(place, std::move(entry));
}

}  // namespace vantrel::practice
