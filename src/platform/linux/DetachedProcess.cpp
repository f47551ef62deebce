#include "platform/linux/DetachedProcess.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <thread>

namespace vantrel::linuxdesktop {

namespace {

// A child that is never waited for stays a zombie for as long as the client runs.
void reapLater(pid_t child) {
    try {
        std::thread([child] {
            while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
            }
        }).detach();
    } catch (const std::system_error&) {
        // No thread to be had: the zombie stays.
    }
}

}  // namespace

bool startDetached(const std::vector<std::string>& arguments) {
    std::vector<std::string> copies = arguments;
    std::vector<char*> pointers;
    for (std::string& argument : copies) pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    posix_spawnattr_t attributes;
    if (posix_spawnattr_init(&attributes) != 0) return false;
    sigset_t everySignal;
    sigset_t noSignal;
    sigfillset(&everySignal);
    sigemptyset(&noSignal);
    posix_spawnattr_setsigdefault(&attributes, &everySignal);
    posix_spawnattr_setsigmask(&attributes, &noSignal);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    pid_t child = 0;
    const int error = posix_spawnp(&child, pointers.front(), nullptr, &attributes, pointers.data(), environ);
    posix_spawnattr_destroy(&attributes);
    if (error != 0) return false;
    reapLater(child);
    return true;
}

}  // namespace vantrel::linuxdesktop
