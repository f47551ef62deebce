#pragma once

#include <limits>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/desktop/Accessibility.h"
#include "platform/threads/Block.h"

namespace vantrel::virtualmac {

/// Faults when the client reads or writes an attribute or performs an action. Any thread. A fault is for one process or
/// for all, and happens a number of times. The oldest matching one applies.
class AccessibilityFaults {
  public:
    enum class Operation { read, write, action };
    static constexpr int always = std::numeric_limits<int>::max();

    /// The call does nothing and returns that error. For a write or an action it may be accessibilitySuccess: the call
    /// is accepted, but nothing happens.
    void fail(Operation operation, std::string name, AccessibilityError error, int times = always,
              std::optional<ProcessIdentifier> process = {});
    /// Reading the attribute gives that value.
    void answer(std::string attribute, AccessibilityValue value, int times = always,
                std::optional<ProcessIdentifier> process = {});
    /// Runs the block once, on the reading thread, after the next read of the attribute and before the caller gets the
    /// result: for what happens between two calls. The block may look at the Mac and change it, but must not wait or
    /// make a platform call.
    void afterRead(std::string attribute, Block block, std::optional<ProcessIdentifier> process = {});
    void clear();

    using Answer = std::variant<AccessibilityValue, AccessibilityError>;

    /// The fault that applies, which is counted. Empty if none does.
    std::optional<Answer> strike(Operation operation, std::string_view name, ProcessIdentifier process);
    /// The block to run after that read. Null if there is none.
    Block takeAfterRead(std::string_view attribute, ProcessIdentifier process);

  private:
    struct Fault {
        Operation operation;
        std::string name;
        Answer answer;
        int times;
        std::optional<ProcessIdentifier> process;
    };
    struct Interruption {
        std::string attribute;
        Block block;
        std::optional<ProcessIdentifier> process;
    };

    std::mutex mutex_;
    std::vector<Fault> faults_;
    std::vector<Interruption> interruptions_;
};

}  // namespace vantrel::virtualmac
