#include "platform/linux/system/TerminationSignals.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QObject>
#include <QSocketNotifier>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <utility>

namespace vantrel::linuxdesktop {

namespace {

// Read by the signal handler.
std::atomic<int> wakeDescriptor = -1;
static_assert(std::atomic<int>::is_always_lock_free);

void wake(int) {
    const int kept = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(wakeDescriptor, &one, sizeof one);
    errno = kept;
}

}  // namespace

TerminationSignals::TerminationSignals(Block onSignal) {
    const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (descriptor < 0) return;
    wakeDescriptor = descriptor;
    notifier_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [descriptor, onSignal = std::move(onSignal)] {
        std::uint64_t count = 0;
        if (read(descriptor, &count, sizeof count) > 0) onSignal();
    });
    struct sigaction action {};
    action.sa_handler = wake;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < signals_.size(); ++i) sigaction(signals_[i], &action, &former_[i]);
}

TerminationSignals::~TerminationSignals() {
    if (!notifier_) return;
    for (std::size_t i = 0; i < signals_.size(); ++i) sigaction(signals_[i], &former_[i], nullptr);
    notifier_.reset();
    close(wakeDescriptor.exchange(-1));
}

}  // namespace vantrel::linuxdesktop
