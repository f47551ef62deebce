// Gives a person the keyboard and the screens back when the client that holds them cannot. The client starts it with
// its own process as the only argument and a socket to itself as standard input.
#include <sys/types.h>
#include <unistd.h>

#include <charconv>
#include <string_view>

#include "platform/linux/guard/process/ClientWatch.h"

int main(int argc, char** argv) {
    using namespace vantrel::linuxdesktop;
    constexpr int wrongUse = 2;
    if (argc != 2) return wrongUse;
    const std::string_view argument = argv[1];
    pid_t client = 0;
    const auto [end, error] = std::from_chars(argument.data(), argument.data() + argument.size(), client);
    if (error != std::errc() || end != argument.data() + argument.size() || client <= 0) return wrongUse;
    const auto watch = ClientWatch::create(client, FileDescriptor(STDIN_FILENO));
    if (!watch) return 1;
    watch->run();
    return 0;
}
