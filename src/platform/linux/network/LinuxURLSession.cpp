#include "platform/linux/network/LinuxURLSession.h"

#include <QMetaObject>
#include <utility>

#include "platform/linux/network/NetworkWorker.h"

namespace vantrel::linuxdesktop {

LinuxURLSession::LinuxURLSession() : worker_(std::make_unique<NetworkWorker>(completions_)) {
    worker_->moveToThread(&thread_);
    thread_.setObjectName("vantrel-network");
    thread_.start();
}

LinuxURLSession::~LinuxURLSession() {
    // Sockets and timers must be destroyed on their own thread.
    QMetaObject::invokeMethod(
        worker_.get(), [this] { worker_->stop(); }, Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
}

void LinuxURLSession::dataTask(URLRequest request, Completion completion) {
    QMetaObject::invokeMethod(
        worker_.get(),
        [worker = worker_.get(), request = std::move(request), completion = std::move(completion)]() mutable {
            worker->start(request, std::move(completion));
        },
        Qt::QueuedConnection);
}

}  // namespace vantrel::linuxdesktop
