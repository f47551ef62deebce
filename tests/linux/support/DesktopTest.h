#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/linux/LinuxComputer.h"
#include "tests/linux/support/TemporaryFolder.h"

class QWidget;

namespace vantrel::linuxdesktop {

/// A test on a real X11 desktop: the display that DISPLAY names, with a window manager. The test runs on the main
/// thread and turns its event loop by waiting. Without a display it fails instead of being skipped.
class DesktopTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// Turns the event loop until the condition holds. False after `seconds`.
    static bool waitUntil(const std::function<bool()>& condition, double seconds = 10);
    /// Turns the event loop for a while.
    static void turnFor(double seconds);

    /// The alert on the screen. Null if there is none.
    static QWidget* alert();
    /// Once an alert is shown: runs the block, then presses a key in the alert if it is still open. Call it before
    /// runModal.
    void answerAlertLater(int key, Block whileShown = {});

    void postEvent(Block event) { desktop->postEvent(std::move(event)); }

    TemporaryFolder folder;
    std::unique_ptr<LinuxComputer> desktop;
    std::unique_ptr<Computer> computer;
};

}  // namespace vantrel::linuxdesktop
