#include <algorithm>
#include <string>

#include "tests/contracts/ContractTest.h"
#include "tests/contracts/InterfaceHost.h"

namespace vantrel::contracts {
namespace {

/// What the system answers about the client itself, on a computer whose settings the tests do not change.
class SystemContract : public ContractTest {};

TEST_F(SystemContract, TheClientRunsUnderItsBundlesIdentifier) {
    const auto identifier = computer().mainBundle.identifier();
    ASSERT_TRUE(identifier);
    const auto running = computer().runningApplications.withBundleIdentifier(*identifier);
    const ProcessIdentifier own = dynamic_cast<InterfaceHost&>(host()).ownProcess();
    EXPECT_TRUE(std::any_of(running.begin(), running.end(),
                            [own](const auto& each) { return each->processIdentifier() == own; }));
    EXPECT_EQ(computer().mainBundle.identifier(), identifier);
}

TEST_F(SystemContract, AClientThatIsTrustedIsSoHoweverItAsks) {
    if (!computer().accessibilityTrust.isProcessTrusted()) GTEST_SKIP() << "SKIPPED: the prompt would come up";
    EXPECT_TRUE(computer().accessibilityTrust.isProcessTrustedWithPrompt());
}

TEST_F(SystemContract, ADecidedAccessIsAnsweredOnceAsItsStatusSays) {
    for (const MediaType media : {MediaType::audio, MediaType::video}) {
        const AuthorizationStatus status = computer().captureAuthorization.status(media);
        if (status == AuthorizationStatus::notDetermined) GTEST_SKIP() << "SKIPPED: the prompt would come up";
        const std::size_t before = notes().size();
        computer().captureAuthorization.requestAccess(media,
                                                      [this](bool granted) { note(granted ? "granted" : "refused"); });
        ASSERT_TRUE(noted(before + 1));
        host().letTimePass(0.2);
        ASSERT_EQ(notes().size(), before + 1);
        EXPECT_EQ(notes().back(), status == AuthorizationStatus::authorized ? "granted" : "refused");
        EXPECT_EQ(computer().captureAuthorization.status(media), status);
    }
}

TEST_F(SystemContract, WhatIsNoAddressOfAnyApplicationIsNotOpened) {
    host().onMain([this] {
        for (const char* address : {"", "server.example", "una parola", ":x", "1a:b"}) {
            EXPECT_FALSE(computer().workspace.open(URL{address})) << address;
        }
    });
}

}  // namespace
}  // namespace vantrel::contracts
