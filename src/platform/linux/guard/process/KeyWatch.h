#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/linux/system/FileDescriptor.h"
#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// Watches over a client's keyboard filters. It hears of key presses, whichever window has the keyboard. Some time
/// after one it asks the filters' threads whether they still run, and has the X server close the connection of one that
/// does not. One thread at a time.
class KeyWatch {
  public:
    using Time = std::chrono::steady_clock::time_point;

    /// How long after a key press the question is asked, so that one question serves a burst of keys, and how long the
    /// answer may take.
    static constexpr std::chrono::milliseconds beforeQuestion{250};
    static constexpr std::chrono::milliseconds forAnswer{750};

    /// `beforeWaiting` is called before each wait for the X server. Null if the server does not report raw key presses.
    static std::unique_ptr<KeyWatch> create(X11Connection& connection, pid_t client,
                                            std::function<void()> beforeWaiting);

    /// Watches the owner of the X resource until its line is closed. Says at once that it does.
    void add(FileDescriptor line, std::uint32_t resource);

    /// Readable when attend() has something to do, besides the X connection.
    std::vector<int> descriptors() const;
    /// When to call attend() even if nothing is readable.
    std::optional<Time> due() const;

    /// Hears the keys and the answers, asks, and frees the keyboard where it has to.
    void attend();

    /// Frees the keyboard at once.
    void freeKeyboard();

  private:
    struct Filter {
        FileDescriptor line;
        std::uint32_t resource = 0;
        std::optional<Time> pressed;
        std::optional<Time> asked;
    };

    KeyWatch(X11Connection& connection, std::uint8_t extension, pid_t client, std::function<void()> beforeWaiting)
        : connection_(connection), extension_(extension), client_(client), beforeWaiting_(std::move(beforeWaiting)) {}

    void hearKeys(bool hear);
    bool keyWasPressed();
    void attend(Filter& filter);
    static void listen(Filter& filter);
    void disconnect(Filter& filter, char reason);
    bool serverWasBusy();

    X11Connection& connection_;
    const std::uint8_t extension_;
    const pid_t client_;
    const std::function<void()> beforeWaiting_;
    std::vector<Filter> filters_;
    bool hears_ = false;
};

}  // namespace vantrel::linuxdesktop
