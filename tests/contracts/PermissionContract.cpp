#include <string>
#include <vector>

#include "tests/contracts/ContractTest.h"
#include "tests/contracts/PermissionHost.h"

namespace vantrel::contracts {
namespace {

class PermissionContract : public ContractTest {
  protected:
    PermissionHost& permissions() { return dynamic_cast<PermissionHost&>(host()); }

    void request(MediaType media) {
        computer().captureAuthorization.requestAccess(media,
                                                      [this](bool granted) { note(granted ? "granted" : "refused"); });
    }

    AuthorizationStatus status(MediaType media) { return computer().captureAuthorization.status(media); }

    static constexpr auto media = {MediaType::audio, MediaType::video};
};

TEST_F(PermissionContract, WhetherTheProcessIsTrustedIsAskedWithoutAPrompt) {
    permissions().setTrusted(false);
    EXPECT_FALSE(computer().accessibilityTrust.isProcessTrusted());
    EXPECT_EQ(permissions().trustPrompts(), 0);
    permissions().setTrusted(true);
    EXPECT_TRUE(computer().accessibilityTrust.isProcessTrusted());
}

TEST_F(PermissionContract, APromptForTrustComesOnlyWhenItIsLacking) {
    permissions().setTrusted(false);
    EXPECT_FALSE(computer().accessibilityTrust.isProcessTrustedWithPrompt());
    EXPECT_EQ(permissions().trustPrompts(), 1);
    permissions().setTrusted(true);
    EXPECT_TRUE(computer().accessibilityTrust.isProcessTrustedWithPrompt());
    EXPECT_EQ(permissions().trustPrompts(), 1);
}

TEST_F(PermissionContract, EachStatusIsRead) {
    for (const MediaType each : media) {
        for (const auto wanted : {AuthorizationStatus::notDetermined, AuthorizationStatus::restricted,
                                  AuthorizationStatus::denied, AuthorizationStatus::authorized}) {
            permissions().setCaptureStatus(each, wanted);
            EXPECT_EQ(status(each), wanted);
        }
    }
}

TEST_F(PermissionContract, MicrophoneAndCameraAreTwoPermissions) {
    permissions().setCaptureStatus(MediaType::audio, AuthorizationStatus::denied);
    permissions().setCaptureStatus(MediaType::video, AuthorizationStatus::authorized);
    EXPECT_EQ(status(MediaType::audio), AuthorizationStatus::denied);
    EXPECT_EQ(status(MediaType::video), AuthorizationStatus::authorized);
    request(MediaType::audio);
    ASSERT_TRUE(noted(1));
    request(MediaType::video);
    ASSERT_TRUE(noted(2));
    EXPECT_EQ(notes(), (Notes{"refused", "granted"}));
}

TEST_F(PermissionContract, WhatIsDecidedIsAnsweredWithoutAPrompt) {
    for (const MediaType each : media) {
        permissions().setCaptureStatus(each, AuthorizationStatus::restricted);
        const std::size_t before = notes().size();
        request(each);
        ASSERT_TRUE(noted(before + 1));
        permissions().setCaptureStatus(each, AuthorizationStatus::authorized);
        request(each);
        ASSERT_TRUE(noted(before + 2));
        EXPECT_EQ(permissions().capturePrompts(), 0U);
    }
    EXPECT_EQ(notes(), (Notes{"refused", "granted", "refused", "granted"}));
}

TEST_F(PermissionContract, WhatIsUndecidedIsAskedOfTheUserAndThenKept) {
    for (const bool granted : {true, false}) {
        for (const MediaType each : media) {
            permissions().setCaptureStatus(each, AuthorizationStatus::notDetermined);
            const std::size_t before = notes().size();
            request(each);
            ASSERT_TRUE(eventually([this] { return permissions().capturePrompts() == 1; }));
            host().letTimePass(1);
            EXPECT_EQ(notes().size(), before);
            EXPECT_EQ(status(each), AuthorizationStatus::notDetermined);
            permissions().answerCapturePrompt(granted);
            ASSERT_TRUE(noted(before + 1));
            EXPECT_EQ(notes().back(), granted ? "granted" : "refused");
            EXPECT_EQ(status(each), granted ? AuthorizationStatus::authorized : AuthorizationStatus::denied);
            EXPECT_EQ(permissions().capturePrompts(), 0U);
        }
    }
}

TEST_F(PermissionContract, TwoRequestsAreAskedOnceAndBothAnswered) {
    permissions().setCaptureStatus(MediaType::video, AuthorizationStatus::notDetermined);
    request(MediaType::video);
    request(MediaType::video);
    ASSERT_TRUE(eventually([this] { return permissions().capturePrompts() == 1; }));
    permissions().answerCapturePrompt(true);
    ASSERT_TRUE(noted(2));
    host().letTimePass(0.5);
    EXPECT_EQ(notes(), (Notes{"granted", "granted"}));
    EXPECT_EQ(permissions().capturePrompts(), 0U);
}

TEST_F(PermissionContract, ARequestFromTheMainThreadDoesNotHoldItUp) {
    permissions().setCaptureStatus(MediaType::audio, AuthorizationStatus::notDetermined);
    host().onMain([this] {
        request(MediaType::audio);
        note("goes on");
    });
    EXPECT_EQ(notes(), Notes{"goes on"});
    permissions().answerCapturePrompt(false);
    ASSERT_TRUE(noted(2));
    EXPECT_EQ(notes(), (Notes{"goes on", "refused"}));
}

}  // namespace
}  // namespace vantrel::contracts
