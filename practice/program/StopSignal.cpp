#include "practice/program/StopSignal.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>

namespace vantrel::practice {

StopSignal::StopSignal() {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return;
    readEnd_ = ends[0];
    writeEnd_ = ends[1];
    for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
    // A handler must not block on a full pipe after many signals.
    fcntl(writeEnd_, F_SETFL, O_NONBLOCK);
}

StopSignal::~StopSignal() {
    if (!isValid()) return;
    close(readEnd_);
    close(writeEnd_);
}

}  // namespace vantrel::practice
