#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/linux/system/FileDescriptor.h"
#include "platform/linux/system/OwnEnvironment.h"
#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {
namespace {

constexpr const char* bus = "DBUS_SESSION_BUS_ADDRESS";

std::vector<std::string> entriesOf(const std::string& name) {
    std::vector<std::string> found;
    for (const std::string& entry : OwnEnvironment::ofOthers()) {
        if (entry.rfind(name + "=", 0) == 0) found.push_back(entry);
    }
    return found;
}

std::string own(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "(none)";
}

// Each test changes other variables, or the same in the same way: what is changed stays so for the process.
TEST(OwnEnvironment, IsNotThatOfOtherPrograms) {
    setenv("VANTREL_TEST_KEPT", "before", 1);
    unsetenv("VANTREL_TEST_NEW");
    setenv("VANTREL_TEST_GONE", "still there", 1);
    OwnEnvironment::set("VANTREL_TEST_KEPT", "ours");
    OwnEnvironment::set("VANTREL_TEST_KEPT", "ours again");
    OwnEnvironment::set("VANTREL_TEST_NEW", "ours");
    OwnEnvironment::unset("VANTREL_TEST_GONE");
    EXPECT_EQ(own("VANTREL_TEST_KEPT"), "ours again");
    EXPECT_EQ(own("VANTREL_TEST_NEW"), "ours");
    EXPECT_EQ(own("VANTREL_TEST_GONE"), "(none)");
    EXPECT_EQ(entriesOf("VANTREL_TEST_KEPT"), std::vector<std::string>{"VANTREL_TEST_KEPT=before"});
    EXPECT_EQ(entriesOf("VANTREL_TEST_NEW"), std::vector<std::string>{});
    EXPECT_EQ(entriesOf("VANTREL_TEST_GONE"), std::vector<std::string>{"VANTREL_TEST_GONE=still there"});
    setenv("VANTREL_TEST_LATER", "for all", 1);
    EXPECT_EQ(entriesOf("VANTREL_TEST_LATER"), std::vector<std::string>{"VANTREL_TEST_LATER=for all"});
}

// A socket as the session bus has it.
class BusSocket {
  public:
    explicit BusSocket(const std::string& path) : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(bind(socket_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }

  private:
    FileDescriptor socket_;
};

TEST(OwnEnvironment, HasABusWhereTheDesktopHasOne) {
    const TemporaryFolder folder;
    setenv(bus, "unix:path=/somewhere", 1);
    keepLibdbusFromStartingABus();
    EXPECT_EQ(own(bus), "unix:path=/somewhere");
    unsetenv(bus);
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
    const BusSocket socket(folder.path() / "bus");
    keepLibdbusFromStartingABus();
    EXPECT_EQ(own(bus), "(none)");
}

TEST(OwnEnvironment, HasNoBusWhereTheDesktopHasNoneAndTellsNoOtherProgram) {
    const TemporaryFolder folder;
    unsetenv(bus);
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
    keepLibdbusFromStartingABus();
    EXPECT_EQ(own(bus), "disabled:");
    EXPECT_EQ(entriesOf(bus), std::vector<std::string>{});
}

}  // namespace
}  // namespace vantrel::linuxdesktop
