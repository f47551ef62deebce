#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/StatusBar.h"
#include "platform/virtual/Engine.h"

namespace vantrel::virtualmac {

/// The client's items in the system menu bar.
class VirtualStatusBar final : public StatusBar {
  public:
    explicit VirtualStatusBar(Engine& engine) : engine_(engine) {}

    [[nodiscard]] std::unique_ptr<StatusItem> statusItem(double length) override;
    void removeStatusItem(StatusItem& item) override;

    /// An item as the participant sees it.
    struct State {
        std::string title;
        Menu menu;
    };
    /// Driver-facing, any thread: oldest first.
    std::vector<State> items() const;

  private:
    class Item;

    Engine& engine_;
    mutable std::mutex mutex_;
    std::vector<std::shared_ptr<State>> items_;
};

}  // namespace vantrel::virtualmac
