#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <regex>
#include <string>

#include "platform/macos/MacComputer.h"
#include "tests/macos/standins/MacInUse.h"

namespace vantrel::standins {
namespace {

using virtualmac::ActivationAnswer;

/// What is asked of the system so that something comes to the front, and what is said of it on standard error.
class FrontTest : public testing::Test {
  protected:
    void SetUp() override {
        mac_.onMain(withPool([this] { platform_ = std::make_unique<macos::MacComputer>(); }));
        chrome_ = mac_.processes().add({"Google Chrome", "com.google.Chrome"});
        note_ = mac_.processes().add({"Note", "com.example.notes"});
        mac_.participant().bringToFront("Note");
        mac_.runFor(0);
        testing::internal::CaptureStderr();
    }

    void TearDown() override {
        unsetenv("VANTREL_TRACE");
        mac_.onMain(withPool([this] { platform_.reset(); }));
    }

    void bringChrome() {
        mac_.onMain(withPool([this] {
            platform_->computer().runningApplications.withProcessIdentifier(chrome_)->activate(ActivationOptions::none);
        }));
        mac_.runFor(1.5);
    }

    static virtualmac::Options withAnIdentifier() {
        virtualmac::Options options;
        options.bundleIdentifier = "biz.quorrin.vantrel";
        return options;
    }

    /// Each line without its moment.
    static std::string said() {
        const std::regex moment("vantrel: [0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z ");
        return std::regex_replace(testing::internal::GetCapturedStderr(), moment, "");
    }

    virtualmac::VirtualMac mac_{withAnIdentifier()};
    MacInUse inUse_{mac_};
    std::unique_ptr<macos::MacComputer> platform_;
    ProcessIdentifier chrome_ = 0;
    ProcessIdentifier note_ = 0;
};

TEST_F(FrontTest, NothingIsSaidOfRequestsUnlessItIsAskedFor) {
    bringChrome();
    setenv("VANTREL_TRACE", "other", 1);
    bringChrome();
    EXPECT_EQ("", said());
}

TEST_F(FrontTest, EachRequestIsSaidWithItsAnswerAndWhoIsInFrontASecondLater) {
    setenv("VANTREL_TRACE", "front", 1);
    bringChrome();
    EXPECT_EQ("front: com.google.Chrome activateWithOptions is declined\n"
              "front: com.google.Chrome activateFromApplication is granted\n"
              "front: com.google.Chrome is in front\n",
              said());
}

TEST_F(FrontTest, ARequestThatTheSystemIgnoresIsSaidSoAndTheNextOneGoesFurther) {
    mac_.activations().setAnswer(ActivationAnswer::ignores);
    setenv("VANTREL_TRACE", "front", 1);
    bringChrome();
    bringChrome();
    EXPECT_EQ("front: com.google.Chrome activateWithOptions is granted\n"
              "front: com.example.notes is in front\n"
              "front: com.google.Chrome activateWithOptions is granted\n"
              "front: com.google.Chrome activateFromApplication is granted\n"
              "front: com.google.Chrome AXFrontmost is granted\n"
              "front: com.google.Chrome is in front\n",
              said());
}

TEST_F(FrontTest, TheClientAsksForItselfInEveryWay) {
    mac_.activations().setAnswer(ActivationAnswer::ignores);
    // It comes once, when it is launched.
    mac_.application().requestActivation();
    mac_.runFor(0);
    mac_.participant().bringToFront("Note");
    mac_.runFor(0);
    setenv("VANTREL_TRACE", "front", 1);
    mac_.onMain(withPool([this] { platform_->computer().application.activate(); }));
    mac_.runFor(1.5);
    EXPECT_EQ("front: biz.quorrin.vantrel activate is made\n"
              "front: biz.quorrin.vantrel activateFromApplication is granted\n"
              "front: biz.quorrin.vantrel activateIgnoringOtherApps is made\n"
              "front: com.example.notes is in front\n",
              said());
}

TEST_F(FrontTest, AnAlertThatNobodyCanSeeIsSaidOnceItEnds) {
    mac_.alerts().setLetIn(virtualmac::AlertsLetIn::never);
    mac_.desktop().setFullScreen(mac_.processes().openWindow(note_, {"Appunti"}), true);
    mac_.runFor(2);
    std::size_t answer = 0;
    mac_.postToMain(withPool([this, &answer] {
        answer = platform_->computer().alerts.runModal({AlertStyle::warning, "Domanda?", "", {"Termina", "Annulla"}});
    }));
    mac_.runFor(20);
    EXPECT_EQ(1U, answer);
    EXPECT_EQ("nobody can see an alert, so it ends as its last button: Domanda?\n", said());
    mac_.onMain([] {});
}

}  // namespace
}  // namespace vantrel::standins
