#include <gtest/gtest.h>

#include "platform/linux/system/WaylandSigns.h"

namespace vantrel::linuxdesktop {
namespace {

TEST(WaylandSigns, ShowAnX11SessionWhereThereAreNone) {
    EXPECT_FALSE(WaylandSigns{}.showWayland());
    EXPECT_FALSE((WaylandSigns{false, {"HDMI-1", "screen", "eDP-XWAYLAND"}, "x11", ""}).showWayland());
}

TEST(WaylandSigns, ShowWaylandByTheExtension) {
    EXPECT_TRUE((WaylandSigns{true, {"DP-1"}, "", ""}).showWayland());
}

TEST(WaylandSigns, ShowWaylandByAnOutputsName) {
    EXPECT_TRUE((WaylandSigns{false, {"XWAYLAND0"}, "", ""}).showWayland());
    EXPECT_TRUE((WaylandSigns{false, {"HDMI-1", "XWAYLAND12"}, "x11", ""}).showWayland());
}

TEST(WaylandSigns, ShowWaylandByTheSessionOnlyWithItsDisplay) {
    EXPECT_TRUE((WaylandSigns{false, {}, "wayland", "wayland-0"}).showWayland());
    EXPECT_FALSE((WaylandSigns{false, {}, "wayland", ""}).showWayland());
    EXPECT_FALSE((WaylandSigns{false, {}, "x11", "wayland-0"}).showWayland());
}

}  // namespace
}  // namespace vantrel::linuxdesktop
