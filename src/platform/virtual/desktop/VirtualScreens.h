#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/desktop/Screens.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/scheduler/NotificationCenter.h"
#include "platform/virtual/world/Displays.h"

namespace vantrel::virtualmac {

class VirtualScreens final : public Screens {
  public:
    explicit VirtualScreens(Engine& engine) : engine_(engine), changes_(engine) {}

    std::vector<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;
    bool screensHaveSeparateSpaces() const override;
    [[nodiscard]] std::unique_ptr<Observation> observeScreenParametersDidChange(Block block) override;

    /// Driver-facing, any thread.
    Displays displays() const;
    /// As before the client's start: without a notification.
    void setUp(Displays displays);
    /// Changes the displays and tells observers.
    void change(Displays displays);
    /// For the following operations: the primary display is always the first one, at (0, 0). When it goes, moves or
    /// comes back, the others get new coordinates.
    void plug(Screen screen);
    /// The following return false if no display has that name. When the last listed display goes, one that mirrored it
    /// shows its own picture.
    bool unplug(std::string_view name);
    /// Moves the display or changes its resolution.
    bool setFrame(std::string_view name, const Rect& frame);
    /// The display shows what another one shows and is not listed. From then on only unmirror() and unplug() find it.
    bool mirror(std::string_view name);
    /// Lists it again, as the primary one if it was that.
    bool unmirror(std::string_view name);
    /// From now on it has the keyboard focus. Without a notification.
    bool focus(std::string_view name);
    /// From now on each change of the displays causes this many notifications, this many seconds apart, as the system
    /// does it.
    void setNotices(int count, double every);

    std::size_t observers() const { return changes_.observers(); }

    /// Set once, before the Mac starts. Called on each change, before observers are told.
    std::function<void()> onChange = [] {};

  private:
    /// A mirroring display, as it was listed before.
    struct Mirrored {
        Screen screen;
        bool wasPrimary = false;
        /// Where the display was that replaced a primary one.
        Point successor;
    };

    /// Removes the display from the list. Empty if none has that name.
    static std::optional<Mirrored> take(Displays& displays, std::string_view name);
    static void putBack(Displays& displays, Mirrored mirrored);

    Engine& engine_;
    NotificationCenter changes_;
    mutable std::mutex mutex_;
    Displays displays_;
    std::vector<Mirrored> mirrored_;
    int notices_ = 1;
    double noticesEvery_ = 0;
};

}  // namespace vantrel::virtualmac
