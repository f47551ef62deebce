#pragma once

#include <cstddef>
#include <memory>

#include "platform/keyboard/KeyboardTap.h"
#include "platform/ui/Alerts.h"
#include "platform/ui/Application.h"
#include "platform/ui/Overlay.h"
#include "platform/ui/StatusBar.h"
#include "platform/ui/Window.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

class CheckedApplication final : public Application {
  public:
    CheckedApplication(Engine& engine, Application& application) : engine_(engine), application_(application) {}

    void setActivationPolicy(ActivationPolicy policy) override;
    void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) override;
    void setMainMenu(const Menu& menu) override;
    void run() override;
    void activate() override;
    void terminate() override;

  private:
    Engine& engine_;
    Application& application_;
};

class CheckedAlerts final : public Alerts {
  public:
    CheckedAlerts(Engine& engine, Alerts& alerts) : engine_(engine), alerts_(alerts) {}

    std::size_t runModal(const Alert& alert) override;

  private:
    Engine& engine_;
    Alerts& alerts_;
};

class CheckedWindows final : public Windows {
  public:
    CheckedWindows(Engine& engine, Windows& windows) : engine_(engine), windows_(windows) {}

    std::unique_ptr<Window> makeWindow(const WindowDescription& description, ActionHandler onAction) override;

  private:
    Engine& engine_;
    Windows& windows_;
};

class CheckedStatusBar final : public StatusBar {
  public:
    CheckedStatusBar(Engine& engine, StatusBar& bar) : engine_(engine), bar_(bar) {}

    std::unique_ptr<StatusItem> statusItem(double length) override;
    void removeStatusItem(StatusItem& item) override;

  private:
    Engine& engine_;
    StatusBar& bar_;
};

class CheckedOverlays final : public Overlays {
  public:
    CheckedOverlays(Engine& engine, Overlays& overlays) : engine_(engine), overlays_(overlays) {}

    std::unique_ptr<Overlay> makeOverlay(const OverlayDescription& description) override;

  private:
    Engine& engine_;
    Overlays& overlays_;
};

class CheckedKeyboardTaps final : public KeyboardTaps {
  public:
    CheckedKeyboardTaps(Engine& engine, KeyboardTaps& taps) : engine_(engine), taps_(taps) {}

    std::unique_ptr<KeyboardTap> create(KeyDecision decision, KeyReport report) override;

  private:
    Engine& engine_;
    KeyboardTaps& taps_;
};

}  // namespace vantrel::virtualmac
