#include <limits>
#include <string>

#include "platform/virtual/scheduler/NumberText.h"
#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

class VirtualMacTest : public MacTest {};

TEST_F(VirtualMacTest, HasTwoClocksOfWhichOnlyTheCalendarGoesOnWhileTheLidIsClosed) {
    EXPECT_EQ(0.0, computer().clock.uptime());
    EXPECT_EQ("2026-03-02T08:00:00Z", computer().dates.string(computer().clock.secondsSince1970()));
    mac().runFor(1.5);
    mac().clock().closeLid(600);
    EXPECT_EQ(1.5, computer().clock.uptime());
    EXPECT_EQ("2026-03-02T08:10:01Z", computer().dates.string(computer().clock.secondsSince1970()));
    EXPECT_EQ((Happenings{{SystemEvent::lid, "600"}}), transcript());
}

TEST_F(VirtualMacTest, KeepsSettings) {
    mac().defaults().put("a", "1");
    EXPECT_EQ("1", computer().userDefaults.string("a"));
    EXPECT_EQ(std::nullopt, computer().userDefaults.string("b"));
    computer().userDefaults.set("b", "due");
    EXPECT_EQ((VirtualUserDefaults::Values{{"a", "1"}, {"b", "due"}}), mac().defaults().values());
    EXPECT_EQ((Happenings{{ClientEvent::settingSaved, "b", {{Field::value, "due"}}}}), transcript());
}

TEST_F(VirtualMacTest, KnowsWhichFilesExist) {
    mac().files().add("/Applications/Google Chrome.app/Contents/MacOS/Google Chrome");
    EXPECT_TRUE(computer().files.fileExists("/Applications/Google Chrome.app"));
    EXPECT_TRUE(computer().files.fileExists("/Applications/Google Chrome.app/"));
    mac().files().remove("/Applications/Google Chrome.app");
    EXPECT_FALSE(computer().files.fileExists("/Applications/Google Chrome.app/Contents/MacOS/Google Chrome"));
    EXPECT_TRUE(computer().files.fileExists("/Applications"));
    EXPECT_FALSE(computer().files.fileExists(""));
    EXPECT_EQ("/Users/partecipante", computer().files.homeDirectory());
}

TEST_F(VirtualMacTest, CanMakeSerialisationAndURLsFail) {
    mac().json().failNext(1);
    EXPECT_FALSE(computer().json.serialise({}));
    EXPECT_EQ("{}", computer().json.serialise({}));
    mac().json().failWhere([](const JSONObject& object) { return object.contains("a"); });
    EXPECT_FALSE(computer().json.serialise({{"a", true}}));
    EXPECT_TRUE(computer().json.serialise({{"b", true}}));
    mac().urls().failFormingWhere([](std::string_view text) { return text.ends_with("/join"); });
    EXPECT_FALSE(computer().urls.form("http://h/join"));
    EXPECT_TRUE(computer().urls.form("http://h/"));
    mac().urls().failEncodingWhere([](std::string_view) { return true; });
    EXPECT_FALSE(computer().urls.addingPercentEncodingForQuery("a"));
}

TEST_F(VirtualMacTest, TellsOfDisplaysThroughTheMainQueue) {
    std::unique_ptr<Observation> observation;
    mac().onMain([&] {
        EXPECT_EQ(1U, computer().screens.screens().size());
        EXPECT_TRUE(computer().screens.screensHaveSeparateSpaces());
        observation = computer().screens.observeScreenParametersDidChange([this] {
            computer().log.print(std::to_string(computer().screens.screens().size()) + " " +
                                 computer().screens.mainScreen()->localizedName);
        });
    });
    mac().screens().plug({"DELL", {{1440, 0}, {1920, 1080}}});
    mac().runFor(0);
    EXPECT_TRUE(mac().screens().unplug("DELL"));
    EXPECT_FALSE(mac().screens().unplug("DELL"));
    mac().runFor(0);
    EXPECT_EQ((Lines{"2 Display integrato", "1 Display integrato"}), logLines());
    EXPECT_EQ("Display integrato 0 0 1440 900", events(SystemEvent::screensChanged).back().field(Field::screen));
    mac().onMain([&] { observation.reset(); });
    mac().screens().unplug("Display integrato");
    mac().onMain([&] { EXPECT_EQ(std::nullopt, computer().screens.mainScreen()); });
    EXPECT_EQ(2U, logLines().size());
    EXPECT_EQ(0U, mac().leftovers().observers);
}

TEST_F(VirtualMacTest, DropsANoticeForAnObserverThatHasGone) {
    std::unique_ptr<Observation> observation;
    mac().onMain([&] {
        observation = computer().screens.observeScreenParametersDidChange([] { ADD_FAILURE(); });
        mac().screens().plug({"DELL", {}});
        observation.reset();
    });
    mac().runFor(1);
}

TEST_F(VirtualMacTest, AnswersForPermissionsThatAreDecidedAndAsksForTheOthers) {
    auto& capture = computer().captureAuthorization;
    const auto request = [&](MediaType media) {
        capture.requestAccess(media, [this](bool granted) {
            EXPECT_FALSE(computer().threads.isMainThread());
            computer().log.print(granted ? "yes" : "no");
        });
    };
    mac().capture().setStatus(MediaType::video, AuthorizationStatus::denied);
    request(MediaType::audio);
    request(MediaType::video);
    mac().runFor(0);
    EXPECT_EQ((Lines{"yes", "no"}), [&] {
        auto lines = logLines();
        std::sort(lines.rbegin(), lines.rend());
        return lines;
    }());
    mac().capture().setStatus(MediaType::video, AuthorizationStatus::notDetermined);
    mac().capture().answerAutomatically(MediaType::video, false, 3);
    forgetEvents();
    request(MediaType::video);
    request(MediaType::video);
    mac().runUntilIdle();
    EXPECT_EQ(3.0, mac().now());
    EXPECT_EQ((Happenings{
                  {PermissionEvent::requested, "camera"},
                  {PermissionEvent::prompt, "camera"},
                  {PermissionEvent::requested, "camera"},
                  {PermissionEvent::answered, "camera", {{Field::granted, "no"}}},
                  {ClientEvent::log, "no"},
                  {ClientEvent::log, "no"},
              }),
              transcript());
    EXPECT_EQ(AuthorizationStatus::denied, capture.status(MediaType::video));
}

TEST_F(VirtualMacTest, AsksForAccessibilityOnlyWhenItIsNotTrusted) {
    EXPECT_TRUE(computer().accessibilityTrust.isProcessTrustedWithPrompt());
    mac().trust().setTrusted(false);
    EXPECT_FALSE(computer().accessibilityTrust.isProcessTrusted());
    EXPECT_FALSE(computer().accessibilityTrust.isProcessTrustedWithPrompt());
    EXPECT_EQ(1, mac().trust().prompts());
    EXPECT_EQ((Happenings{{PermissionEvent::accessibilityPrompt}}), transcript());
}

TEST_F(VirtualMacTest, OpensAddressesUnlessNothingDoes) {
    mac().onMain([&] {
        EXPECT_TRUE(computer().workspace.open(URL{"http://a/"}));
        mac().workspace().setFailing(true);
        EXPECT_FALSE(computer().workspace.open(URL{"http://b/"}));
    });
    EXPECT_EQ(Lines{"http://a/"}, mac().workspace().opened());
    EXPECT_EQ((Happenings{
                  {ClientEvent::urlOpened, "http://a/", {{Field::opened, "yes"}}},
                  {ClientEvent::urlOpened, "http://b/", {{Field::opened, "no"}}},
              }),
              transcript());
}

TEST_F(VirtualMacTest, ListsRunningApplicationsUntilTheyEnd) {
    auto& applications = computer().runningApplications;
    ApplicationDescription stubborn;
    stubborn.name = "Chrome";
    stubborn.bundleIdentifier = "com.google.Chrome";
    stubborn.ignoresTerminate = true;
    stubborn.exitDelay = 2;
    const auto process = mac().applications().add(stubborn);
    const auto found = applications.withBundleIdentifier("com.google.Chrome");
    ASSERT_EQ(1U, found.size());
    EXPECT_EQ(process, found.front()->processIdentifier());
    EXPECT_EQ("Chrome", found.front()->localizedName());
    EXPECT_TRUE(found.front()->activate(ActivationOptions::ignoringOtherApps));
    EXPECT_TRUE(found.front()->terminate());
    mac().runFor(5);
    EXPECT_FALSE(found.front()->isTerminated());
    EXPECT_TRUE(found.front()->forceTerminate());
    EXPECT_FALSE(found.front()->isTerminated());
    mac().runFor(2);
    EXPECT_TRUE(found.front()->isTerminated());
    EXPECT_FALSE(found.front()->activate(ActivationOptions::none));
    EXPECT_TRUE(applications.withBundleIdentifier("com.google.Chrome").empty());
    EXPECT_EQ(nullptr, applications.withProcessIdentifier(process));
    EXPECT_FALSE(mac().applications().exit(process));
    EXPECT_EQ((Happenings{
                  {ApplicationEvent::started, "Chrome", {{Field::pid, "501"}}},
                  {ApplicationEvent::activate, "Chrome", {{Field::pid, "501"}, {Field::options, "2"}}},
                  {ApplicationEvent::terminate, "Chrome", {{Field::pid, "501"}}},
                  {ApplicationEvent::frontmost, "Chrome", {{Field::pid, "501"}}},
                  {ApplicationEvent::forceTerminate, "Chrome", {{Field::pid, "501"}}},
                  {ApplicationEvent::exited, "Chrome", {{Field::pid, "501"}}},
                  {ApplicationEvent::activate,
                   "Chrome",
                   {{Field::pid, "501"}, {Field::options, "0"}, {Field::error, "no such process"}}},
              }),
              transcript());
}

TEST_F(VirtualMacTest, CountsItselfAmongTheRunningApplicationsUnderItsBundlesIdentifier) {
    EXPECT_EQ(std::nullopt, computer().mainBundle.identifier());
    EXPECT_TRUE(computer().runningApplications.withBundleIdentifier("biz.quorrin.vantrel").empty());
    EXPECT_NE(nullptr, computer().runningApplications.withProcessIdentifier(mac().applications().ownProcess()));
    Options options = optionsFromEnvironment();
    options.bundleIdentifier = "biz.quorrin.vantrel";
    VirtualMac bundled(options);
    EXPECT_EQ(1U, bundled.computer().runningApplications.withBundleIdentifier("biz.quorrin.vantrel").size());
}

TEST_F(VirtualMacTest, DoesWhatItIsToldAtItsMoment) {
    mac().at(3, [this] { computer().log.print("at 3"); });
    mac().after(1, [this] { computer().log.print("after 1"); });
    mac().runUntil(2);
    mac().at(1, [this] { computer().log.print("late"); });
    mac().runFor(0);
    EXPECT_EQ((Lines{"after 1", "late"}), logLines());
    mac().runUntilIdle();
    EXPECT_EQ(3.0, mac().now());
    EXPECT_EQ(3.0, events(ClientEvent::log).back().time);
}

TEST(Numbers, AreWrittenWithoutAnExponent) {
    EXPECT_EQ("10000000", shortest(1e7));
    EXPECT_EQ("100000", shortest(100'000));
    EXPECT_EQ("0.00001", shortest(1e-5));
    EXPECT_EQ("-2.5", shortest(-2.5));
    EXPECT_EQ(309U, shortest(std::numeric_limits<double>::max()).size());
    EXPECT_EQ(326U, shortest(std::numeric_limits<double>::denorm_min()).size());
}

}  // namespace
}  // namespace vantrel::virtualmac
