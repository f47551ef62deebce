#pragma once

#include <string_view>
#include <vector>

#include "tests/simulation/model/reading/Entry.h"

namespace vantrel::simulation {

/// The entries of a transcript. The text has to outlive it.
class Transcript {
  public:
    explicit Transcript(std::string_view text);
    Transcript(const Transcript&) = delete;
    Transcript& operator=(const Transcript&) = delete;

    const std::vector<Entry>& entries() const { return entries_; }

    /// Lines that are no entry and none of an entry's further lines.
    const std::vector<std::size_t>& unreadable() const { return unreadable_; }

  private:
    void read(std::size_t number, std::string_view line);

    std::vector<Entry> entries_;
    std::vector<std::string_view> further_;
    std::vector<std::size_t> furtherBegins_;  // for each entry
    std::vector<std::size_t> unreadable_;
};

}  // namespace vantrel::simulation
