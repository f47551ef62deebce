#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/ui/StatusBar.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/ui/MenuTracking.h"

namespace vantrel::virtualmac {

/// The client's items in the system menu bar.
class VirtualStatusBar final : public StatusBar {
  public:
    VirtualStatusBar(Engine& engine, MenuTracking& menus) : engine_(engine), menus_(menus) {}

    /// A chosen entry acts from the run loop, whatever its mode.
    [[nodiscard]] std::unique_ptr<StatusItem> statusItem(double length) override;
    /// The lower level of statusItem(), as in the system: a chosen entry acts where the choice is delivered.
    [[nodiscard]] std::unique_ptr<StatusItem> systemItem();
    void removeStatusItem(StatusItem& item) override;

    /// An item as the participant sees it.
    struct State {
        std::string title;
        Menu menu;
        /// Counted from 1.
        std::uint64_t number = 0;
    };
    /// Driver-facing, any thread: oldest first.
    std::vector<State> items() const;

  private:
    class Item;
    enum class Acts { fromTheRunLoop, whereTheChoiceIsDelivered };

    std::unique_ptr<StatusItem> make(Acts acts);

    Engine& engine_;
    MenuTracking& menus_;
    mutable std::mutex mutex_;
    std::vector<std::shared_ptr<State>> items_;
    std::uint64_t made_ = 0;
};

}  // namespace vantrel::virtualmac
