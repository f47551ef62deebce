#include "rehearsal/playing/EndEntry.h"

#include <string>
#include <utility>
#include <vector>

namespace vantrel::rehearsal {
namespace {

std::string state(virtualmac::VirtualMac& mac) {
    if (!mac.isRunning()) return "the client has quit";
    if (const auto alerts = mac.alerts().up(); !alerts.empty()) {
        return "the client waits for an answer to: " + alerts.back().messageText;
    }
    if (mac.menus().isOpen()) return "a menu is open";
    if (mac.leftovers().prompts > 0) return "a permission prompt is up";
    return "the client is running";
}

std::string leftOver(const virtualmac::Leftovers& leftovers) {
    const std::vector<std::pair<const char*, std::size_t>> counts = {{"windows", leftovers.windows},
                                                                     {"visible windows", leftovers.visibleWindows},
                                                                     {"status items", leftovers.statusItems},
                                                                     {"overlays", leftovers.overlays},
                                                                     {"keyboard taps", leftovers.keyboardTaps},
                                                                     {"alerts", leftovers.alerts},
                                                                     {"permission prompts", leftovers.prompts},
                                                                     {"timers", leftovers.timers},
                                                                     {"observers", leftovers.observers},
                                                                     {"pending blocks", leftovers.pendingBlocks},
                                                                     {"background work", leftovers.workers},
                                                                     {"requests", leftovers.requests}};
    std::string text;
    for (const auto& [name, count] : counts) {
        if (count > 0) text += (text.empty() ? "" : ", ") + std::string(name) + " " + std::to_string(count);
    }
    return "left: " + (text.empty() ? "nothing" : text);
}

}  // namespace

void writeEnd(virtualmac::VirtualMac& mac, Transcript& transcript) {
    transcript.add(mac.now(), "end", state(mac), {leftOver(mac.leftovers())});
}

}  // namespace vantrel::rehearsal
