#include "tests/contracts/ContractTest.h"
#include "tests/contracts/WorkspaceHost.h"

namespace vantrel::contracts {
namespace {

class WorkspaceContract : public ContractTest {
  protected:
    WorkspaceHost& desktop() { return dynamic_cast<WorkspaceHost&>(host()); }

    bool open(const char* address) {
        bool opened = false;
        host().onMain([&] { opened = computer().workspace.open(URL{address}); });
        return opened;
    }
};

TEST_F(WorkspaceContract, AnAddressIsOpenedAsItStands) {
    constexpr auto first = "https://download.example/client?v=2&l='it'#note";
    constexpr auto second = "http://127.0.0.1:8787/";
    EXPECT_TRUE(open(first));
    EXPECT_TRUE(eventually([&] { return desktop().addressesOpened() == Notes{first}; }));
    EXPECT_TRUE(open(second));
    EXPECT_TRUE(eventually([&] { return desktop().addressesOpened() == Notes{first, second}; }));
}

TEST_F(WorkspaceContract, WhatIsNoAddressOpensNothing) {
    for (const char* address : {"", "server.example", "/etc/hosts", "--help", "1a:b", ":x"}) {
        EXPECT_FALSE(open(address)) << address;
    }
    host().letTimePass(0.2);
    EXPECT_EQ(desktop().addressesOpened(), Notes{});
}

TEST_F(WorkspaceContract, AnAddressThatNobodyOpensIsToldAsSuch) {
    desktop().haveNoOpener();
    EXPECT_FALSE(open("https://download.example/"));
    EXPECT_EQ(desktop().addressesOpened(), Notes{});
}

}  // namespace
}  // namespace vantrel::contracts
