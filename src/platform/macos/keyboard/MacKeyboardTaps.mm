#include "platform/macos/keyboard/MacKeyboardTaps.h"

#include <utility>

#include "platform/macos/keyboard/MacKeyboardTap.h"
#include "platform/macos/threads/MainThread.h"

namespace vantrel::macos {

std::unique_ptr<KeyboardTap> MacKeyboardTaps::create(KeyDecision decision, KeyReport report) {
    requireMainThread("create");
    return MacKeyboardTap::create(decision, std::move(report));
}

}  // namespace vantrel::macos
