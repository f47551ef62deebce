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

/// What goes wrong when the client reads or writes an attribute or performs an action. Any thread. A fault is for one
/// process or for all of them, and holds so many times; the oldest one that fits strikes.
class AccessibilityFaults {
  public:
    enum class Operation { read, write, action };
    static constexpr int always = std::numeric_limits<int>::max();

    /// Instead of reading, writing or doing anything the call gives that error. For a write or an action it may be
    /// accessibilitySuccess: it is accepted, and nothing happens.
    void fail(Operation operation, std::string name, AccessibilityError error, int times = always,
              std::optional<ProcessIdentifier> process = {});
    /// Reads of the attribute give that value.
    void answer(std::string attribute, AccessibilityValue value, int times = always,
                std::optional<ProcessIdentifier> process = {});
    /// Runs the block once, on the reading thread, after the next read of the attribute and before the caller has it:
    /// for what happens between two calls. It may look at the Mac and change it, but neither waits nor makes a platform
    /// call.
    void afterRead(std::string attribute, Block block, std::optional<ProcessIdentifier> process = {});
    void clear();

    using Answer = std::variant<AccessibilityValue, AccessibilityError>;

    /// What strikes, and counts it; empty for nothing.
    std::optional<Answer> strike(Operation operation, std::string_view name, ProcessIdentifier process);
    /// What is to run after that read; null for nothing.
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
