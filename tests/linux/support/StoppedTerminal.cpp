#include "tests/linux/support/StoppedTerminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <termios.h>

namespace vantrel::linuxdesktop {

StoppedTerminal::StoppedTerminal() {
    int other = -1;
    int terminal = -1;
    EXPECT_EQ(openpty(&other, &terminal, nullptr, nullptr, nullptr), 0);
    other_ = FileDescriptor(other);
    terminal_ = FileDescriptor(terminal);
    for (const int end : {other, terminal}) EXPECT_EQ(fcntl(end, F_SETFD, FD_CLOEXEC), 0);
    EXPECT_EQ(tcflow(terminal, TCOOFF), 0);
}

void StoppedTerminal::goOn() const {
    EXPECT_EQ(tcflow(terminal_.get(), TCOON), 0);
}

}  // namespace vantrel::linuxdesktop
