#include <gtest/gtest.h>

#include "tests/rehearsal/Reading.h"

namespace vantrel::rehearsal {
namespace {

MacSetup macFrom(const std::string& words) {
    return good(head + "timeline: []\nmac:\n" + words).mac;
}

std::string problemsInMac(const std::string& words) {
    return wrong(head + "timeline: []\nmac: {" + words + "}\n");
}

TEST(BrowserReader, ReadsHowABrowserBehaves) {
    const auto setup = macFrom(
        "  full-screen-takes: 2\n  window-flags-lag: 0.1\n  browsers:\n"
        "    - edge\n    - {name: chrome, refuses-force-quit: yes, quits-in: 3}\n");
    InstalledBrowser chrome;
    chrome.behaviour.refusesForceTerminate = true;
    chrome.behaviour.exitDelay = 3;
    EXPECT_EQ(setup.browsers, InstalledBrowsers({{BrowserName::edge, {}}, {BrowserName::chrome, chrome}}));
    EXPECT_EQ(setup.fullScreenDuration, 2);
    EXPECT_EQ(setup.flagDelay, 0.1);
    EXPECT_EQ(setup.safari, std::nullopt);
}

TEST(BrowserReader, ReadsHowABrowserStarts) {
    const auto browsers = *macFrom(
                               "  browsers:\n"
                               "    - {name: chrome, in-home: yes, cannot-start: Rotto., starts-in: 1.5}\n"
                               "    - {name: edge, forks: yes, ends-in: 0.1, opens-window-in: 9}\n"
                               "    - {name: safari, answers-in: 14, answers-with: nothing}\n")
                               .browsers;
    EXPECT_TRUE(browsers.at(BrowserName::chrome).isInHome);
    EXPECT_EQ(browsers.at(BrowserName::chrome).startFailure, "Rotto.");
    EXPECT_EQ(browsers.at(BrowserName::chrome).appearsAfter, 1.5);
    EXPECT_TRUE(browsers.at(BrowserName::edge).forks);
    EXPECT_EQ(browsers.at(BrowserName::edge).exitsAfter, 0.1);
    EXPECT_EQ(browsers.at(BrowserName::edge).windowAfter, 9);
    EXPECT_EQ(browsers.at(BrowserName::safari).answerDelay, 14);
    EXPECT_TRUE(browsers.at(BrowserName::safari).answersWithNothing);
}

TEST(BrowserReader, ReadsThatThereIsNoSafari) {
    EXPECT_EQ(macFrom("  safari: no\n").safari, false);
    EXPECT_EQ(macFrom("  safari: yes\n  browsers: [safari]\n").safari, true);
}

TEST(BrowserReader, ReadsAnApplicationWithoutANameOrAnIdentifier) {
    const auto applications = macFrom(
                                  "  applications:\n    - {name: none, bundle-identifier: com.example.x}\n"
                                  "    - {name: Nudo, bundle-identifier: none}\n")
                                  .applications;
    ASSERT_EQ(applications.size(), 2U);
    EXPECT_EQ(applications[0].name, "");
    EXPECT_EQ(applications[0].bundleIdentifier, "com.example.x");
    EXPECT_EQ(applications[1].name, "Nudo");
    EXPECT_EQ(applications[1].bundleIdentifier, std::nullopt);
}

TEST(BrowserReader, RefusesWhatNoBrowserCanDo) {
    EXPECT_EQ(problemsInMac("browsers: [{quits-in: 1}, opera]"),
              "4: a browser lacks 'name'\n4: a browser is not one of: chrome, edge, firefox, safari\n");
    EXPECT_EQ(problemsInMac("browsers: [{name: chrome, starts-in: 3601}]"), "4: 'starts-in' is more than 3600\n");
    EXPECT_EQ(problemsInMac("browsers: [{name: chrome, cannot-start: ''}]"), "4: 'cannot-start' is empty\n");
    EXPECT_EQ(problemsInMac("browsers: [{name: safari, answers-with: error}]"),
              "4: 'answers-with' is not one of: nothing\n");
    EXPECT_EQ(problemsInMac("browsers: [{name: safari, in-home: yes}]"),
              "4: Safari is part of the system and not in the home folder\n");
    EXPECT_EQ(problemsInMac("browsers: [{name: edge, answers-in: 1}]"),
              "4: the system answers for Safari only, which opens addresses\n");
    EXPECT_EQ(problemsInMac("browsers: [edge, {name: edge, in-home: yes}]"), "4: 'edge' stands twice in 'browsers'\n");
    EXPECT_EQ(problemsInMac("browsers: [{name: chrome, forks: maybe}]"),
              "4: 'forks' is not one of: yes, no, true, false\n");
    EXPECT_EQ(problemsInMac("browsers: [{name: chrome, ends-in: -1}]"), "4: 'ends-in' is less than 0\n");
    EXPECT_EQ(problemsInMac("safari: none"), "4: 'safari' is not one of: yes, no, true, false\n");
    EXPECT_EQ(problemsInMac("browsers: [safari], safari: no"),
              "4: Safari stands among the browsers, and 'safari' says that there is none\n");
}

}  // namespace
}  // namespace vantrel::rehearsal
