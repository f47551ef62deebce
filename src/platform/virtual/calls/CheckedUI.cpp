#include "platform/virtual/calls/CheckedUI.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vantrel::virtualmac {

namespace {

class CheckedWindow final : public Window {
  public:
    CheckedWindow(Engine& engine, std::unique_ptr<Window> window) : engine_(engine), window_(std::move(window)) {}
    ~CheckedWindow() override { engine_.mainThreadCall("Window's end"); }
    CheckedWindow(const CheckedWindow&) = delete;
    CheckedWindow& operator=(const CheckedWindow&) = delete;

    void center() override {
        engine_.mainThreadCall("Window.center");
        window_->center();
    }

    void setIsVisible(bool visible) override {
        engine_.mainThreadCall("Window.setIsVisible");
        window_->setIsVisible(visible);
    }

    void makeKeyAndOrderFront() override {
        engine_.mainThreadCall("Window.makeKeyAndOrderFront");
        window_->makeKeyAndOrderFront();
    }

    void orderOut() override {
        engine_.mainThreadCall("Window.orderOut");
        window_->orderOut();
    }

    unsigned styleMask() const override {
        engine_.mainThreadCall("Window.styleMask");
        return window_->styleMask();
    }

    void setStyleMask(unsigned mask) override {
        engine_.mainThreadCall("Window.setStyleMask");
        window_->setStyleMask(mask);
    }

    std::optional<std::string> text(std::string_view id) const override {
        engine_.mainThreadCall("Window.text");
        return window_->text(id);
    }

    void setText(std::string_view id, std::string_view text) override {
        engine_.mainThreadCall("Window.setText");
        window_->setText(id, text);
    }

    void setEnabled(std::string_view id, bool enabled) override {
        engine_.mainThreadCall("Window.setEnabled");
        window_->setEnabled(id, enabled);
    }

    void setViewHidden(std::string_view viewId, bool hidden) override {
        engine_.mainThreadCall("Window.setViewHidden");
        window_->setViewHidden(viewId, hidden);
    }

  private:
    Engine& engine_;
    std::unique_ptr<Window> window_;
};

class CheckedOverlay final : public Overlay {
  public:
    CheckedOverlay(Engine& engine, std::unique_ptr<Overlay> overlay) : engine_(engine), overlay_(std::move(overlay)) {}
    ~CheckedOverlay() override { engine_.mainThreadCall("Overlay's end"); }
    CheckedOverlay(const CheckedOverlay&) = delete;
    CheckedOverlay& operator=(const CheckedOverlay&) = delete;

    void setLevel(int level) override {
        engine_.mainThreadCall("Overlay.setLevel");
        overlay_->setLevel(level);
    }

    void orderFrontRegardless() override {
        engine_.mainThreadCall("Overlay.orderFrontRegardless");
        overlay_->orderFrontRegardless();
    }

    void orderOut() override {
        engine_.mainThreadCall("Overlay.orderOut");
        overlay_->orderOut();
    }

    void close() override {
        engine_.mainThreadCall("Overlay.close");
        overlay_->close();
    }

  private:
    Engine& engine_;
    std::unique_ptr<Overlay> overlay_;
};

class CheckedStatusItem final : public StatusItem {
  public:
    CheckedStatusItem(Engine& engine, std::unique_ptr<StatusItem> item) : engine_(engine), item_(std::move(item)) {}
    ~CheckedStatusItem() override { engine_.mainThreadCall("StatusItem's end"); }
    CheckedStatusItem(const CheckedStatusItem&) = delete;
    CheckedStatusItem& operator=(const CheckedStatusItem&) = delete;

    void setButtonTitle(const std::string& title) override {
        engine_.mainThreadCall("StatusItem.setButtonTitle");
        item_->setButtonTitle(title);
    }

    void setMenu(const Menu& menu) override {
        engine_.mainThreadCall("StatusItem.setMenu");
        item_->setMenu(menu);
    }

    StatusItem& original() { return *item_; }

  private:
    Engine& engine_;
    std::unique_ptr<StatusItem> item_;
};

class CheckedKeyboardTap final : public KeyboardTap {
  public:
    CheckedKeyboardTap(Engine& engine, std::unique_ptr<KeyboardTap> tap) : engine_(engine), tap_(std::move(tap)) {}
    ~CheckedKeyboardTap() override { engine_.mainThreadCall("KeyboardTap's end"); }
    CheckedKeyboardTap(const CheckedKeyboardTap&) = delete;
    CheckedKeyboardTap& operator=(const CheckedKeyboardTap&) = delete;

  private:
    Engine& engine_;
    std::unique_ptr<KeyboardTap> tap_;
};

}  // namespace

void CheckedApplication::setActivationPolicy(ActivationPolicy policy) {
    engine_.mainThreadCall("Application.setActivationPolicy");
    application_.setActivationPolicy(policy);
}

void CheckedApplication::setDelegate(std::weak_ptr<ApplicationDelegate> delegate) {
    engine_.mainThreadCall("Application.setDelegate");
    application_.setDelegate(std::move(delegate));
}

void CheckedApplication::setMainMenu(const Menu& menu) {
    engine_.mainThreadCall("Application.setMainMenu");
    application_.setMainMenu(menu);
}

void CheckedApplication::run() {
    engine_.mainThreadCall("Application.run");
    application_.run();
}

void CheckedApplication::activate() {
    engine_.mainThreadCall("Application.activate");
    application_.activate();
}

void CheckedApplication::terminate() {
    engine_.mainThreadCall("Application.terminate");
    application_.terminate();
}

std::size_t CheckedAlerts::runModal(const Alert& alert) {
    engine_.mainThreadCall("Alerts.runModal");
    return alerts_.runModal(alert);
}

std::unique_ptr<Window> CheckedWindows::makeWindow(const WindowDescription& description, ActionHandler onAction) {
    engine_.mainThreadCall("Windows.makeWindow");
    return std::make_unique<CheckedWindow>(engine_, windows_.makeWindow(description, std::move(onAction)));
}

std::unique_ptr<StatusItem> CheckedStatusBar::statusItem(double length) {
    engine_.mainThreadCall("StatusBar.statusItem");
    return std::make_unique<CheckedStatusItem>(engine_, bar_.statusItem(length));
}

void CheckedStatusBar::removeStatusItem(StatusItem& item) {
    engine_.mainThreadCall("StatusBar.removeStatusItem");
    // A status bar knows its own items only.
    auto* const checked = dynamic_cast<CheckedStatusItem*>(&item);
    bar_.removeStatusItem(checked == nullptr ? item : checked->original());
}

std::unique_ptr<Overlay> CheckedOverlays::makeOverlay(const OverlayDescription& description) {
    engine_.mainThreadCall("Overlays.makeOverlay");
    return std::make_unique<CheckedOverlay>(engine_, overlays_.makeOverlay(description));
}

std::unique_ptr<KeyboardTap> CheckedKeyboardTaps::create(KeyDecision decision, KeyReport report) {
    engine_.mainThreadCall("KeyboardTaps.create");
    auto tap = taps_.create(decision, std::move(report));
    if (!tap) return nullptr;
    return std::make_unique<CheckedKeyboardTap>(engine_, std::move(tap));
}

}  // namespace vantrel::virtualmac
