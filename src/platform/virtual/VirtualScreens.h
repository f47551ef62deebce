#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "platform/Screens.h"
#include "platform/virtual/Engine.h"

namespace vantrel::virtualmac {

/// The displays that are plugged in, the primary one first.
struct Displays {
    std::vector<Screen> screens{{"Display integrato", {{0, 0}, {1440, 900}}}};
    /// Which one has the keyboard focus.
    std::size_t main = 0;
    bool haveSeparateSpaces = true;
};

class VirtualScreens final : public Screens {
  public:
    explicit VirtualScreens(Engine& engine) : engine_(engine) {}

    std::vector<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;
    bool screensHaveSeparateSpaces() const override;
    [[nodiscard]] std::unique_ptr<Observation> observeScreenParametersDidChange(Block block) override;

    /// Driver-facing, any thread.
    Displays displays() const;
    /// As it is before the client starts: without a notice.
    void setUp(Displays displays);
    /// The displays change and observers are told.
    void change(Displays displays);
    void plug(Screen screen);
    /// False when there is none of that name.
    bool unplug(std::string_view name);

    std::size_t observers() const;

  private:
    struct Observer;
    class Handle;

    Engine& engine_;
    mutable std::mutex mutex_;
    Displays displays_;
    std::vector<std::weak_ptr<Observer>> observers_;
};

}  // namespace vantrel::virtualmac
