#include "tests/contracts/PeerOptions.h"

#include <array>
#include <charconv>
#include <string_view>

namespace vantrel::peer {

namespace {

// The title may itself contain commas: the four numbers come last.
std::optional<PeerWindowOption> windowOption(std::string_view text) {
    PeerWindowOption option;
    for (int* number : std::array{&option.height, &option.width, &option.y, &option.x}) {
        const std::size_t comma = text.rfind(',');
        if (comma == std::string_view::npos) return std::nullopt;
        const std::string_view digits = text.substr(comma + 1);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), *number);
        if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
        text = text.substr(0, comma);
    }
    option.title = text;
    constexpr std::string_view byte = "%FF";
    const std::size_t at = option.title.find(byte);
    if (at != std::string::npos) option.title.replace(at, byte.size(), "\xff");
    if (option.width <= 0 || option.height <= 0) return std::nullopt;
    return option;
}

}  // namespace

std::optional<PeerOptions> PeerOptions::read(const std::vector<std::string>& arguments) {
    constexpr std::string_view window = "--window=";
    constexpr std::string_view windowClass = "--class=";
    PeerOptions options;
    for (const std::string& argument : arguments) {
        if (argument.starts_with(window)) {
            const auto option = windowOption(std::string_view(argument).substr(window.size()));
            if (!option) return std::nullopt;
            options.windows.push_back(*option);
        } else if (argument.starts_with(windowClass)) {
            options.windowClass = argument.substr(windowClass.size());
        } else if (argument == "--exits-without-windows") {
            options.exitsWithoutWindows = true;
        } else if (argument == "--ignores-terminate") {
            options.ignoresTerminate = true;
        } else if (argument == "--exits-at-once") {
            options.exitsAtOnce = true;
        }
    }
    return options;
}

}  // namespace vantrel::peer
