#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/macos/MacComputer.h"
#include "platform/portable/PortableJSONSerialization.h"
#include "record/RecordMain.h"
#include "tests/macos/standins/MacInUse.h"

namespace vantrel::standins {
namespace {

/// The recorder once on the virtual Mac itself and once through the macOS platform.
class RecorderOnTheMac : public testing::Test {
  protected:
    static std::vector<JSONValue> recording(bool throughMacOS) {
        virtualmac::VirtualMac mac;
        std::vector<JSONValue> looks;
        const auto keep = [&looks](std::string_view line) {
            looks.push_back(PortableJSONSerialization().parse(line).value_or(JSONValue()));
            return true;
        };
        if (!throughMacOS) {
            mac.launch([&](Computer& computer) { record(computer, "recording", keep); });
            play(mac);
            return looks;
        }
        const MacInUse inUse(mac);
        mac.launch([&](Computer&) {
            withPool([&] {
                macos::MacComputer platform;
                record(platform.computer(), "recording", keep);
            })();
        });
        play(mac);
        mac.end();
        return looks;
    }

  private:
    static void play(virtualmac::VirtualMac& mac) {
        const auto chrome = mac.applications().add({"Google Chrome", "com.google.Chrome"});
        const auto window = mac.applications().openWindow(chrome, {"Lezione 1 – è", {{100.5, 100}, {800, 600}}});
        mac.runFor(1.2);
        mac.desktop().setFullScreen(window, true);
        mac.runFor(2);
        mac.screens().plug({"Secondo", {{1440, 0}, {1280, 720}}});
        mac.runFor(1);
        mac.windowList().setScreenRecordingAllowed(false);
        mac.runFor(1);
        mac.windowList().setFailing(true);
        mac.runFor(1);
        mac.participant().logOut();
        mac.runFor(1);
        EXPECT_FALSE(mac.isRunning());
    }
};

TEST_F(RecorderOnTheMac, WritesWhatTheVirtualMacDoes) {
    const auto expected = recording(false);
    ASSERT_GT(expected.size(), 10U);
    EXPECT_EQ(recording(true), expected);
}

}  // namespace
}  // namespace vantrel::standins
