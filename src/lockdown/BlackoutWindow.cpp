#include "lockdown/BlackoutWindow.h"

#include "lockdown/BlackoutContentView.h"

namespace vantrel {
namespace {

constexpr int level = 1000;
/// Can join all Spaces, stationary, ignores window cycling.
constexpr unsigned collectionBehavior = 0x51;

}  // namespace

BlackoutWindow::BlackoutWindow(Overlays& overlays, const Screen& screen)
    : window_(overlays.makeOverlay(
          {screen.frame, level, collectionBehavior, BlackoutContentView::labels(screen.frame.size)})) {
    window_->orderFrontRegardless();
}

void BlackoutWindow::enforce() {
    window_->setLevel(level);
    window_->orderFrontRegardless();
}

void BlackoutWindow::close() {
    window_->orderOut();
    window_->close();
}

}  // namespace vantrel
