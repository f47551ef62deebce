#include "tests/simulation/model/acts/BlockedKey.h"

#include <array>
#include <utility>

namespace vantrel::simulation {
namespace {

using Named = std::pair<std::string_view, std::string_view>;

// Where a macOS key code stands for a key that matters here.
constexpr std::array<Named, 24> codes{
    {{"code-2", "d"},      {"code-4", "h"},      {"code-12", "q"},   {"code-13", "w"},     {"code-17", "t"},
     {"code-37", "l"},     {"code-45", "n"},     {"code-46", "m"},   {"code-48", "tab"},   {"code-18", "1"},
     {"code-19", "2"},     {"code-20", "3"},     {"code-21", "4"},   {"code-23", "5"},     {"code-22", "6"},
     {"code-26", "7"},     {"code-28", "8"},     {"code-25", "9"},   {"code-123", "left"}, {"code-124", "right"},
     {"code-49", "space"}, {"code-125", "down"}, {"code-126", "up"}, {"code-3", "f"}}};

constexpr std::array<Named, 20> withCommand{
    {{"d", "Cmd+D"}, {"h", "Cmd+H"}, {"q", "Cmd+Q"},        {"w", "Cmd+W"},         {"t", "Cmd+T"},
     {"l", "Cmd+L"}, {"n", "Cmd+N"}, {"m", "Cmd+M"},        {"1", "Cmd+1"},         {"2", "Cmd+2"},
     {"3", "Cmd+3"}, {"4", "Cmd+4"}, {"5", "Cmd+5"},        {"6", "Cmd+6"},         {"7", "Cmd+7"},
     {"8", "Cmd+8"}, {"9", "Cmd+9"}, {"left", "Cmd+Arrow"}, {"right", "Cmd+Arrow"}, {"space", "Cmd+Space"}}};
constexpr std::array<Named, 3> withBoth{{{"down", "Ctrl+Down"}, {"up", "Ctrl+Up"}, {"f", "Cmd+Ctrl+F"}}};
constexpr std::array<Named, 4> withControl{
    {{"down", "Ctrl+Down"}, {"up", "Ctrl+Up"}, {"left", "Ctrl+Arrow"}, {"right", "Ctrl+Arrow"}}};

template <std::size_t size>
std::string_view in(const std::array<Named, size>& table, std::string_view key) {
    for (const auto& [name, value] : table) {
        if (name == key) return value;
    }
    return {};
}

}  // namespace

std::string_view blockedName(std::string_view key) {
    bool command = false;
    bool control = false;
    bool shift = false;
    for (std::size_t plus = key.find('+'); plus != key.npos; plus = key.find('+')) {
        const std::string_view modifier = key.substr(0, plus);
        command = command || modifier == "cmd";
        control = control || modifier == "ctrl";
        shift = shift || modifier == "shift";
        key.remove_prefix(plus + 1);
    }
    if (const std::string_view named = in(codes, key); !named.empty()) key = named;
    if (command) {
        if (key == "tab") return shift ? "Cmd+Shift+Tab" : "Cmd+Tab";
        const std::string_view name = in(withCommand, key);
        return name.empty() && control ? in(withBoth, key) : name;
    }
    if (!control) return {};
    if (key == "tab") return shift ? "Ctrl+Shift+Tab" : "Ctrl+Tab";
    return in(withControl, key);
}

}  // namespace vantrel::simulation
