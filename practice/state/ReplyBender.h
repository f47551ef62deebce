#pragma once

#include <cstdint>
#include <vector>

#include "practice/bodies/BendRule.h"
#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"

namespace vantrel::practice {

/// The rules by which replies are bent, in the order they were added. The first that matches and is not used up bends a
/// reply, alone. Not guarded: PracticeServer's mutex is.
class ReplyBender {
  public:
    struct Entry {
        std::uint64_t number = 0;
        BendRule rule;
        std::uint64_t used = 0;
    };

    /// Returns the rule's number, counted from 1.
    std::uint64_t add(BendRule rule);
    void clear();
    /// Returns whether a rule applied.
    bool bend(const PracticeRequest& request, PracticeReply& reply);

    /// Rules that are used up stay in the list.
    const std::vector<Entry>& entries() const { return entries_; }

  private:
    std::vector<Entry> entries_;
    std::uint64_t nextNumber_ = 1;
};

}  // namespace vantrel::practice
