#pragma once

#include <chrono>
#include <cstdint>

namespace vantrel::linuxdesktop {

/// What the client tells a guard, one datagram each.
struct GuardMessage {
    enum class Kind : std::uint32_t {
        /// The client's main thread runs.
        mainThreadRuns,
        /// Watch over the filter that owns the X resource. A socket to the filter's thread comes with it: the guard
        /// asks with a '?' and expects '!'. The first question says that the guard watches.
        watchKeys
    };
    Kind kind = Kind::mainThreadRuns;
    std::uint32_t resource = 0;
};

constexpr char guardQuestion = '?';
constexpr char filterAnswer = '!';
/// What a guard says on such a line just before it frees the keyboard.
constexpr char keyboardOfAStoppedClient = 's';
constexpr char keyboardOfASilentFilter = 'k';

/// How often the client says that its main thread runs while anything is guarded.
constexpr std::chrono::seconds mainThreadBeat{2};

/// A property of each window that covers a display: the process of its client. The guard finds the covers by it, and
/// nothing has to be said while the client is in difficulties.
constexpr const char* coverMark = "_VANTREL_COVER";

}  // namespace vantrel::linuxdesktop
