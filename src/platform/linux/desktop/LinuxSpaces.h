#pragma once

#include <memory>
#include <vector>

#include "platform/desktop/Spaces.h"

namespace vantrel {
class DispatchQueue;
}

namespace vantrel::linuxdesktop {

class X11Watcher;

/// The window manager's desktops as Spaces. Observers are told once each time the window manager writes the current
/// desktop's number, even if changes pile up while the main thread is busy. Main thread.
class LinuxSpaces final : public Spaces {
  public:
    LinuxSpaces(X11Watcher& watcher, DispatchQueue& mainQueue);
    ~LinuxSpaces() override;

    [[nodiscard]] std::unique_ptr<Observation> observeActiveSpaceDidChange(Block block) override;

  private:
    struct Observer;
    class Removal;

    void tell();

    DispatchQueue& mainQueue_;
    std::vector<std::weak_ptr<Observer>> observers_;
    std::unique_ptr<Observation> notices_;
};

}  // namespace vantrel::linuxdesktop
