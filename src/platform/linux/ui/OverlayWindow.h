#pragma once

#include <QWidget>
#include <vector>

#include "platform/ui/Overlay.h"

namespace vantrel::linuxdesktop {

/// A black window with labels. The window manager does not manage it: it is on every desktop, never gets the focus and
/// takes every click. Main thread.
class OverlayWindow final : public QWidget {
  public:
    /// `place` is in pixels of the root window.
    OverlayWindow(const QRect& place, std::vector<OverlayLabel> labels);

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    QRectF frameOf(const OverlayLabel& label) const;

    const std::vector<OverlayLabel> labels_;
};

}  // namespace vantrel::linuxdesktop
