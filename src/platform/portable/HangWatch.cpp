#include "platform/portable/HangWatch.h"

#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

#include "platform/portable/StandardError.h"

namespace vantrel {

namespace {

enum class Heard { answer, rest, nothing, end };

Heard listen(int line, int milliseconds) {
    pollfd source{line, POLLIN, 0};
    int ready = 0;
    do ready = poll(&source, 1, milliseconds);
    while (ready < 0 && errno == EINTR);
    if (ready == 0) return Heard::nothing;
    std::array<char, 64> said{};
    const ssize_t count = ready < 0 ? -1 : read(line, said.data(), said.size());
    if (count <= 0) return Heard::end;
    return said.at(static_cast<std::size_t>(count) - 1) == watchedAnswer ? Heard::answer : Heard::rest;
}

}  // namespace

void watchClient(int line, pid_t client, int patienceMilliseconds) {
    constexpr int forEver = -1;
    constexpr std::string_view why = "vantrel: the client is ended: its main thread has not answered\n";
    bool expects = false;
    bool isOverdue = false;
    for (;;) {
        const Heard heard = listen(line, expects ? patienceMilliseconds : forEver);
        if (heard == Heard::end) return;
        if (heard == Heard::nothing && isOverdue) {
            kill(client, SIGKILL);
            sayOnStandardError(why);
            return;
        }
        isOverdue = heard == Heard::nothing;
        if (!isOverdue) expects = heard == Heard::answer;
    }
}

}  // namespace vantrel
