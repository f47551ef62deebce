#include "platform/linux/threads/MainThread.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>
#include <cstdlib>
#include <string>
#include <utility>

#include "platform/portable/StandardError.h"

namespace vantrel::linuxdesktop {

namespace {

class BlockEvent final : public QEvent {
  public:
    explicit BlockEvent(Block block) : QEvent(QEvent::User), block(std::move(block)) {}
    Block block;
};

class Receiver final : public QObject {
  public:
    bool event(QEvent* event) override {
        if (auto* carrier = dynamic_cast<BlockEvent*>(event)) {
            carrier->block();
            return true;
        }
        return QObject::event(event);
    }
};

}  // namespace

MainThread::MainThread() : receiver_(std::make_unique<Receiver>()) {}

MainThread::~MainThread() = default;

bool MainThread::isCurrent() const {
    return QThread::currentThread() == receiver_->thread();
}

void MainThread::post(Block event) {
    // Qt takes ownership and deletes the event after delivery.
    QCoreApplication::postEvent(receiver_.get(), new BlockEvent(std::move(event)));
}

void MainThread::runPosted() {
    QCoreApplication::sendPostedEvents(receiver_.get());
}

void MainThread::require(const char* operation) {
    const QCoreApplication* application = QCoreApplication::instance();
    if (application != nullptr && QThread::currentThread() == application->thread()) return;
    sayOnStandardError(std::string("vantrel: ") + operation + " was called off the main thread\n");
    std::abort();
}

}  // namespace vantrel::linuxdesktop
