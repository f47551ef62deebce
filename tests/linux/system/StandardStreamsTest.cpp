#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

#include "platform/linux/system/StandardStreams.h"

namespace vantrel::linuxdesktop {
namespace {

bool isNull(int descriptor) {
    struct stat found {};
    struct stat null {};
    return fstat(descriptor, &found) == 0 && stat("/dev/null", &null) == 0 && found.st_rdev == null.st_rdev &&
           S_ISCHR(found.st_mode);
}

// The exit status of a child that starts with a pipe on each standard stream except the closed ones. It has a bit for
// each stream that is /dev/null then, plus 8 if the next file does not get the number after them.
int outcomeWithClosed(const std::vector<int>& closed) {
    const pid_t child = fork();
    if (child == 0) {
        int ends[2] = {};
        if (pipe(ends) != 0) _exit(99);
        for (int descriptor = 0; descriptor <= 2; ++descriptor) {
            if (dup2(ends[1], descriptor) < 0) _exit(99);
        }
        for (const int descriptor : closed) close(descriptor);
        openMissingStandardStreams();
        int outcome = open("/dev/null", O_RDONLY) <= 2 ? 8 : 0;
        for (int descriptor = 0; descriptor <= 2; ++descriptor) outcome |= isNull(descriptor) ? 1 << descriptor : 0;
        _exit(outcome);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

TEST(StandardStreams, AreNullWhereTheyAreMissingAndLeftAloneElsewhere) {
    EXPECT_EQ(outcomeWithClosed({}), 0);
    EXPECT_EQ(outcomeWithClosed({0}), 1);
    EXPECT_EQ(outcomeWithClosed({1}), 2);
    EXPECT_EQ(outcomeWithClosed({2}), 4);
    EXPECT_EQ(outcomeWithClosed({0, 2}), 5);
    EXPECT_EQ(outcomeWithClosed({0, 1, 2}), 7);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
