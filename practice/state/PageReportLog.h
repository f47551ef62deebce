#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

#include "practice/bodies/PageReport.h"
#include "practice/bodies/PageReportsBody.h"

namespace vantrel::practice {

/// The reports of the meeting pages. Any thread.
///
/// Pages are numbered from 1 in the order of their first reports. The oldest reports are forgotten, and so are the
/// oldest pages: one that reports again after that counts as new.
class PageReportLog {
  public:
    static constexpr std::size_t reportsKept = 5000;
    static constexpr std::size_t pagesKept = 256;

    struct Entry {
        /// Seconds since 1970.
        double time = 0;
        std::string session;
        std::uint64_t page = 0;
        PageReport report;
    };

    /// Reports that arrive out of order are put in their place, and duplicates count once.
    void add(const std::string& code, const PageReportsBody& body, double now);
    /// Page numbering continues.
    void clear();

    /// The reports of one page by their numbers, those of several pages by arrival.
    std::vector<Entry> entries() const;

  private:
    // With the lock held.
    std::uint64_t pageNumber(const std::string& name);
    void insert(Entry entry);

    mutable std::mutex mutex_;
    std::deque<Entry> entries_;
    std::deque<std::string> pages_;
    std::uint64_t forgottenPages_ = 0;
};

}  // namespace vantrel::practice
