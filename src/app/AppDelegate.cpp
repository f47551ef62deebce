#include "app/AppDelegate.h"

namespace vantrel {

void AppDelegate::applicationDidFinishLaunching() {
    if (!isOnlyInstance()) {
        computer_.alerts.runModal({AlertStyle::informational, "Vantrel è già in esecuzione.", "", {}});
        computer_.application.terminate();
        return;
    }
    mainWindowController_ = MainWindowController::create(computer_);
    auto& window = mainWindowController_->window();
    window.center();
    window.setIsVisible(true);
    window.makeKeyAndOrderFront();
    computer_.application.activate();
    computer_.log.print("[APP] Vantrel avviato");
}

TerminateReply AppDelegate::applicationShouldTerminate() {
    if (!mainWindowController_) return TerminateReply::now;
    if (mainWindowController_->isInLockdown()) return TerminateReply::cancel;
    // Does nothing without a lockdown. Called anyway, so that every session ends through the same routine.
    mainWindowController_->endSession(SessionEndReason::userRequest);
    return TerminateReply::now;
}

bool AppDelegate::isOnlyInstance() const {
    const auto identifier = computer_.mainBundle.identifier().value_or("biz.quorrin.vantrel");
    return computer_.runningApplications.withBundleIdentifier(identifier).size() < 2;
}

}  // namespace vantrel
