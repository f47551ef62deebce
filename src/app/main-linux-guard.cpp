// Releases the keyboard when the client that filters it stops answering. The client starts it with the identifier of
// one of its X resources as the only argument and a socket to the client as standard input.
#include <unistd.h>

#include <charconv>
#include <cstdint>
#include <string_view>

#include "platform/linux/guard/process/KeyWatch.h"

int main(int argc, char** argv) {
    constexpr int wrongUse = 2;
    if (argc != 2) return wrongUse;
    const std::string_view argument = argv[1];
    std::uint32_t resource = 0;
    const auto [end, error] = std::from_chars(argument.data(), argument.data() + argument.size(), resource);
    if (error != std::errc() || end != argument.data() + argument.size() || resource == 0) return wrongUse;
    const auto watch = vantrel::linuxdesktop::KeyWatch::open();
    if (!watch) return 1;
    watch->watch(STDIN_FILENO, resource);
    return 0;
}
