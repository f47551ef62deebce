#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

#include "platform/portable/StandardError.h"
#include "tests/linux/support/StoppedTerminal.h"

namespace vantrel::linuxdesktop {
namespace {

// Whether a process that says many lines there comes to its end.
bool isHeldUpBy(int terminal) {
    constexpr unsigned patience = 20;
    const pid_t child = fork();
    EXPECT_GE(child, 0);
    if (child == 0) {
        alarm(patience);
        dup2(terminal, STDERR_FILENO);
        for (int i = 0; i < 5000; ++i) sayOnStandardError("vantrel: riga " + std::to_string(i) + "\n");
        _exit(0);
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return status != 0;
}

TEST(StandardError, IsHeldUpByNoTerminalThatIsStoppedOrThatNobodyReads) {
    const StoppedTerminal terminal;
    EXPECT_FALSE(isHeldUpBy(terminal.get()));
    terminal.goOn();
    EXPECT_FALSE(isHeldUpBy(terminal.get()));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
