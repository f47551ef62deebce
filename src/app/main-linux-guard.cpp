// Gives a person the keyboard and the screens back when the client that holds them cannot. The client starts it with
// its own process and the number of a pipe that it reads as arguments, and a socket to itself as standard input.
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/guard/process/ClientWatch.h"

namespace {

std::optional<int> number(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 0) return std::nullopt;
    return value;
}

}  // namespace

int main(int argc, char** argv) {
    using namespace vantrel::linuxdesktop;
    constexpr int wrongUse = 2;
    if (argc != 3) return wrongUse;
    const auto client = number(argv[1]);
    const auto pipe = number(argv[2]);
    if (!client || *client == 0 || !pipe) return wrongUse;
    const auto watch = ClientWatch::create(*client, FileDescriptor(STDIN_FILENO));
    if (!watch) return 1;
    // Last of all: whoever has it open watches.
    const std::string presence = "/proc/" + std::to_string(*client) + "/fd/" + std::to_string(*pipe);
    const FileDescriptor present(open(presence.c_str(), O_WRONLY | O_CLOEXEC));
    watch->run();
    return 0;
}
