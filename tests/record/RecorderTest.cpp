#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/portable/PortableJSONSerialization.h"
#include "record/RecordMain.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

class RecorderTest : public virtualmac::MacTest {
  protected:
    void launch() {
        mac().launch([this](Computer& computer) {
            record(computer, "recording.jsonl", [this](std::string_view line) {
                if (lines.empty()) saidBeforeTheFirst = logLines();
                if (full) return false;
                lines.emplace_back(line);
                return true;
            });
        });
        mac().runFor(0);
    }

    JSONObject look(std::size_t place) const {
        const auto parsed = PortableJSONSerialization().parse(lines.at(place));
        return parsed && parsed->object() != nullptr ? *parsed->object() : JSONObject{};
    }
    JSONObject last() const { return look(lines.size() - 1); }
    std::vector<JSONValue> all(const char* key) const {
        std::vector<JSONValue> found;
        for (std::size_t place = 0; place < lines.size(); ++place) found.push_back(look(place)[key]);
        return found;
    }
    std::vector<JSONValue> causes() const { return all("cause"); }

    std::vector<std::string> lines;
    std::vector<std::string> saidBeforeTheFirst;
    bool full = false;
};

TEST_F(RecorderTest, SaysWhatItWritesAndWhereBeforeTheFirstLine) {
    launch();
    ASSERT_THAT(saidBeforeTheFirst, SizeIs(1));
    EXPECT_THAT(saidBeforeTheFirst.front(), HasSubstr("writes to recording.jsonl"));
    EXPECT_THAT(saidBeforeTheFirst.front(), HasSubstr("title"));
    EXPECT_THAT(lines, SizeIs(1));
}

TEST_F(RecorderTest, WritesALineEveryHalfSecond) {
    mac().runFor(0.25);
    launch();
    mac().runFor(2);
    EXPECT_THAT(causes(), ElementsAre("start", "time", "time", "time", "time"));
    EXPECT_THAT(all("uptime"), ElementsAre(0.25, 0.75, 1.25, 1.75, 2.25));
    EXPECT_THAT(all("line"), ElementsAre(1.0, 2.0, 3.0, 4.0, 5.0));
}

TEST_F(RecorderTest, ALineHoldsTheClocksTheApplicationInFrontTheDisplaysAndTheWindows) {
    const auto chrome = mac().applications().add({"Google Chrome", "com.google.Chrome"});
    const auto window = mac().applications().openWindow(chrome, {"Lezione", {{100, 100}, {800, 600}}});
    launch();
    const Screen screen = mac().screens().displays().screens.at(0);
    const JSONValue shown = JSONObject{
        {"name", screen.localizedName},
        {"frame", JSONArray{0.0, 0.0, screen.frame.size.width, screen.frame.size.height}},
    };
    const JSONObject expected{
        {"line", 1.0},
        {"cause", "start"},
        {"uptime", 0.0},
        {"time", 1772438400.0},
        {"front",
         JSONObject{
             {"process", static_cast<double>(chrome)}, {"bundle", "com.google.Chrome"}, {"name", "Google Chrome"}}},
        {"screens", JSONArray{shown}},
        {"main-screen", shown},
        {"separate-spaces", mac().screens().displays().haveSeparateSpaces},
        {"windows", JSONArray{JSONObject{{"number", static_cast<double>(window)},
                                         {"process", static_cast<double>(chrome)},
                                         {"owner", "Google Chrome"},
                                         {"title", "Lezione"},
                                         {"layer", 0.0},
                                         {"bounds", JSONArray{100.0, 100.0, 800.0, 600.0}},
                                         {"onscreen", true}}}},
    };
    EXPECT_EQ(last(), expected) << lines.back();
}

TEST_F(RecorderTest, ASpaceChangeHasItsOwnLine) {
    const auto chrome = mac().applications().add({"Google Chrome", "com.google.Chrome"});
    const auto window = mac().applications().openWindow(chrome, {"Lezione", {{100, 100}, {800, 600}}});
    launch();
    mac().runFor(0.25);
    mac().desktop().setFullScreen(window, true);
    mac().runFor(0);
    EXPECT_THAT(causes(), ElementsAre("start", "space"));
    EXPECT_EQ(last()["uptime"], 0.25);
}

TEST_F(RecorderTest, AChangeOfTheDisplaysHasItsOwnLine) {
    launch();
    mac().runFor(0.25);
    mac().screens().plug({"Secondo", {{1440, 0}, {1280, 720}}});
    mac().runFor(0);
    EXPECT_THAT(causes(), ElementsAre("start", "screens"));
    EXPECT_THAT(*last()["screens"].array(), SizeIs(2));
}

TEST_F(RecorderTest, WhatCannotBeReadIsNull) {
    const auto nameless = mac().applications().add({"", std::nullopt});
    mac().applications().openWindow(nameless, {"Lezione", {{100, 100}, {800, 600}}});
    using virtualmac::WindowKey;
    for (const auto key : {WindowKey::number, WindowKey::ownerPID, WindowKey::ownerName, WindowKey::name,
                           WindowKey::layer, WindowKey::bounds, WindowKey::isOnscreen}) {
        mac().windowList().withhold(key);
    }
    launch();
    const JSONObject unknown{{"number", {}}, {"process", {}}, {"owner", {}},   {"title", {}},
                             {"layer", {}},  {"bounds", {}},  {"onscreen", {}}};
    EXPECT_EQ(last()["windows"], JSONValue(JSONArray{unknown})) << lines.back();
    mac().windowList().setFailing(true);
    mac().runFor(0.5);
    EXPECT_EQ(last()["windows"], JSONValue()) << lines.back();
}

TEST_F(RecorderTest, NobodyInFrontIsNull) {
    launch();
    EXPECT_EQ(last()["front"], JSONValue()) << lines.back();
}

TEST_F(RecorderTest, ALookThatIsNoJSONLeavesAGapInTheNumbers) {
    launch();
    mac().json().failNext(1);
    mac().runFor(1);
    EXPECT_THAT(all("line"), ElementsAre(1.0, 3.0));
}

TEST_F(RecorderTest, OnlyReads) {
    const auto chrome = mac().applications().add({"Google Chrome", "com.google.Chrome"});
    mac().applications().openWindow(chrome, {"Lezione", {{100, 100}, {800, 600}}});
    forgetEvents();
    launch();
    mac().runFor(5);
    EXPECT_THAT(lines, SizeIs(11));
    for (const auto& event : events()) EXPECT_EQ(event.kind, ClientEvent::log) << event.text;
}

TEST_F(RecorderTest, AFileThatTakesNothingMoreEndsTheRecordingWithAWord) {
    launch();
    forgetEvents();
    full = true;
    mac().runFor(5);
    EXPECT_FALSE(mac().isRunning());
    EXPECT_THAT(lines, SizeIs(1));
    EXPECT_THAT(logLines(), ElementsAre("vantrel-record: the file takes nothing more, so the recording ends here."));
}

TEST_F(RecorderTest, MayBeQuitAtAnyTime) {
    launch();
    participant().logOut();
    mac().runFor(1);
    EXPECT_FALSE(mac().isRunning());
}

}  // namespace
}  // namespace vantrel
