#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "platform/desktop/Spaces.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/scheduler/NotificationCenter.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// The notification of Space changes, and the participant's gestures.
class VirtualSpaces final : public Spaces {
  public:
    enum class Direction { left, right };

    VirtualSpaces(Engine& engine, VirtualDesktop& desktop);

    [[nodiscard]] std::unique_ptr<Observation> observeActiveSpaceDidChange(Block block) override;

    /// Driver-facing, any thread. A display is named as in Screen; an empty name is the primary one. A swipe shows the
    /// Space beside the current one, and the application whose window is in front there comes to the front. False if
    /// there is no such Space.
    bool swipe(Direction direction, const std::string& display = {});
    /// By its place from the left, counted from 0.
    bool switchTo(std::size_t place, const std::string& display = {});
    /// Adds a desktop Space to the right of the others.
    void addDesktop(const std::string& display = {});
    /// The place of the current Space, and whether it is a full-screen window's.
    std::size_t current(const std::string& display = {}) const;
    bool isFullScreen(const std::string& display = {}) const;
    std::size_t count(const std::string& display = {}) const;

    std::size_t observers() const { return notices_.observers(); }

  private:
    VirtualDesktop& desktop_;
    NotificationCenter notices_;
};

}  // namespace vantrel::virtualmac
