#include "platform/linux/ui/LostDisplay.h"

#include <QString>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>
#include <utility>

#include "platform/linux/system/QtMessages.h"
#include "platform/linux/threads/MainThread.h"
#include "platform/linux/threads/RunLoopModes.h"
#include "platform/linux/ui/QtConnection.h"

namespace vantrel::linuxdesktop {

namespace {

using Clock = std::chrono::steady_clock;

// Longer than a browser's launch and the end of a session together.
constexpr std::chrono::seconds patience{30};
constexpr std::chrono::milliseconds betweenTurns{20};

// Qt speaks on any thread.
std::atomic<LostDisplay*> present = nullptr;

}  // namespace

LostDisplay::LostDisplay(MainThread& mainThread, RunLoopModes& modes, Ends ends)
    : mainThread_(mainThread), modes_(modes), ends_(std::move(ends)), former_(qInstallMessageHandler(hear)) {
    present = this;
}

LostDisplay::~LostDisplay() {
    present = nullptr;
    qInstallMessageHandler(former_);
}

// Qt has no other hook. It says why and calls exit() where it notices, on the main thread, in whatever loop of events
// runs. In a handler of exit() some of Qt's own objects would be gone already.
void LostDisplay::hear(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    sayQtMessage(type, context, message);
    LostDisplay* self = present;
    if (self == nullptr || !self->mainThread_.isCurrent() || qtHasDisplay()) return;
    present = nullptr;
    self->goOnWithoutDisplay();
}

// Qt's loops of events would call exit() again. Blocks arrive without them.
void LostDisplay::goOnWithoutDisplay() {
    modes_.stayDefault();
    for (const auto end = Clock::now() + patience; Clock::now() < end;) {
        mainThread_.runPosted();
        ends_.terminate();
        std::this_thread::sleep_for(betweenTurns);
    }
    ends_.endProcess();
    std::_Exit(EXIT_FAILURE);
}

}  // namespace vantrel::linuxdesktop
