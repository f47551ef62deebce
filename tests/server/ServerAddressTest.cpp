#include <gtest/gtest.h>

#include "server/ServerAddress.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {
namespace {

TEST(ServerAddress, LosesOneTrailingSlash) {
    EXPECT_EQ(withoutTrailingSlash("https://a/"), "https://a");
    EXPECT_EQ(withoutTrailingSlash("https://a//"), "https://a/");
    EXPECT_EQ(withoutTrailingSlash("https://a"), "https://a");
    EXPECT_EQ(withoutTrailingSlash("/"), "");
    EXPECT_EQ(withoutTrailingSlash(""), "");
}

class ServerBaseAddressTest : public virtualmac::MacTest {};

TEST_F(ServerBaseAddressTest, IsTheSavedOneElseTheDefault) {
    EXPECT_EQ(serverBaseAddress(mac().defaults()), defaultServerAddress);
    mac().defaults().put("vt_serverURL", "nonsense ");
    EXPECT_EQ(serverBaseAddress(mac().defaults()), "nonsense ");
    mac().defaults().put("vt_serverURL", "https://a/");
    EXPECT_EQ(serverBaseAddress(mac().defaults()), "https://a");
    mac().defaults().put("vt_serverURL", "");
    EXPECT_EQ(serverBaseAddress(mac().defaults()), "");
}

}  // namespace
}  // namespace vantrel
