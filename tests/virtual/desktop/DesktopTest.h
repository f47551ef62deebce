#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {

/// A test with an application that has a window, and an observer of Space changes.
class DesktopTest : public MacTest {
  protected:
    void SetUp() override {
        process = mac().applications().add({"Google Chrome", "com.google.Chrome"});
        window = mac().applications().openWindow(process, {"Lezione", {{100, 100}, {800, 600}}});
        mac().onMain([this] {
            observation = computer().spaces.observeActiveSpaceDidChange([this] {
                EXPECT_TRUE(computer().threads.isMainThread());
                ++notices;
            });
        });
        forgetEvents();
    }
    void TearDown() override {
        mac().onMain([this] { observation.reset(); });
        MacTest::TearDown();
    }

    AppWindow state() { return mac().desktop().window(window).value_or(AppWindow{}); }
    bool isOnScreen() { return mac().desktop().isOnScreen(window); }
    /// Past the end of any transition.
    void settle() { mac().runFor(1); }

    ProcessIdentifier process = 0;
    std::int64_t window = 0;
    std::unique_ptr<Observation> observation;
    std::atomic<int> notices = 0;
};

}  // namespace vantrel::virtualmac
