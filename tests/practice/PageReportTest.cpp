#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Requests.h"

namespace vantrel::practice::test {
namespace {

using nlohmann::json;

json withNumber(std::uint64_t number, json report) {
    report["number"] = number;
    return report;
}

json text(std::uint64_t number, const std::string& value) {
    return {{"number", number}, {"kind", "text"}, {"text", value}};
}

json view(const std::string& kind) {
    return {{"kind", kind},       {"width", 1440},   {"height", 900},
            {"fullScreen", true}, {"visible", true}, {"focused", false}};
}

json key(const std::string& name) {
    return {{"kind", "key"}, {"key", name},  {"code", "KeyQ"}, {"ctrl", false},
            {"shift", true}, {"alt", false}, {"meta", true},   {"repeat", false}};
}

json device(const std::string& name, const std::string& state) {
    return {{"kind", "device"}, {"device", name}, {"state", state}, {"detail", "Fotocamera HD"}};
}

json without(json value, const std::string& name) {
    value.erase(name);
    return value;
}

json with(json value, const std::string& name, json member) {
    value[name] = std::move(member);
    return value;
}

/// Braces around a single value would mean the value itself.
template <typename... Item>
json list(const Item&... items) {
    json values = json::array();
    (values.push_back(items), ...);
    return values;
}

class PageReports : public testing::Test {
  protected:
    PracticeReply send(const json& reports, const std::string& page = "a1", const std::string& code = "PROVA") {
        return server.handle(post("/meet/" + code + "/reports", json({{"page", page}, {"reports", reports}}).dump()));
    }

    json listed() { return parsed(server.handle(get("/control/reports"))); }

    /// Page, number and text of each.
    std::vector<std::string> shortList() {
        std::vector<std::string> list;
        for (const json& entry : listed()) {
            list.push_back(std::to_string(entry["page"].get<int>()) + "." + std::to_string(entry["number"].get<int>()) +
                           " " + entry["text"].get<std::string>());
        }
        return list;
    }

    double now = standingTime;
    PracticeServer server{fourSessions(), [this] { return now; }};
};

TEST_F(PageReports, AreListedWithAllTheyTellInTheirOrder) {
    EXPECT_EQ(listed(), json::array());
    const PracticeReply reply = send(list(withNumber(1, view("opened")), withNumber(2, key("Q"))));
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(parsed(reply), json({{"reports", 2}}));
    now += 1;
    const json message{{"number", 5}, {"kind", "message"}, {"text", "però"}};
    send(list(withNumber(3, view("view")), text(4, ""), message));
    send(list(withNumber(6, device("camera", "live")), withNumber(7, device("microphone", "refused"))));

    json expected =
        json::array({withNumber(1, view("opened")), withNumber(2, key("Q")), withNumber(3, view("view")), text(4, ""),
                     message, withNumber(6, device("camera", "live")), withNumber(7, device("microphone", "refused"))});
    for (std::size_t index = 0; index < expected.size(); ++index) {
        expected[index].update({{"time", standingTime + (index < 2 ? 0 : 1)}, {"session", "PROVA"}, {"page", 1}});
    }
    EXPECT_EQ(listed(), expected);

    const auto entries = server.pageReports();
    ASSERT_EQ(entries.size(), 7U);
    EXPECT_EQ(std::get<PageKey>(entries[1].report.content).key, "Q");
    EXPECT_EQ(std::get<PageDevice>(entries[6].report.content).state, "refused");
    EXPECT_TRUE(std::get<PageOpened>(entries[0].report.content).fullScreen);
}

TEST_F(PageReports, NumberThePagesAsTheyFirstReport) {
    send(list(text(1, "a")), "zz");
    send(list(text(1, "b")), "aa", "attesa");
    send(list(text(2, "c")), "zz");
    EXPECT_EQ(shortList(), (std::vector<std::string>{"1.1 a", "2.1 b", "1.2 c"}));
    EXPECT_EQ(listed()[1]["session"], "ATTESA");
}

TEST_F(PageReports, ThatWereOvertakenStandWhereTheyBelong) {
    send(list(text(1, "a")));
    send(list(text(4, "d")));
    send(list(text(1, "other")), "b2");
    send(list(text(2, "b"), text(3, "c")));
    EXPECT_EQ(shortList(), (std::vector<std::string>{"1.1 a", "1.2 b", "1.3 c", "1.4 d", "2.1 other"}));
}

TEST_F(PageReports, SentTwiceCountOnce) {
    send(list(text(1, "a"), text(2, "b")));
    EXPECT_EQ(send(list(text(1, "again"), text(2, "again"), text(3, "c"))).status, 200);
    EXPECT_EQ(shortList(), (std::vector<std::string>{"1.1 a", "1.2 b", "1.3 c"}));
}

TEST_F(PageReports, AreTakenForEveryKnownCodeInAnyCase) {
    EXPECT_EQ(send(list(text(1, "a")), "a1", "chiusa").status, 200);
    EXPECT_EQ(listed()[0]["session"], "CHIUSA");
    EXPECT_EQ(send(list(text(2, "b")), "a1", "ALTRA").status, 404);
    EXPECT_EQ(server.handle(get("/meet/PROVA/reports")).status, 405);
    EXPECT_EQ(server.handle(post("/control/reports", "")).status, 405);
    EXPECT_EQ(listed().size(), 1U);
}

TEST_F(PageReports, ThatAreWrongGetAReasonAndChangeNothing) {
    send(list(text(1, "a")));
    const std::vector<std::pair<json, std::string>> wrong{
        {json::array(), "\"reports\" is empty"},
        {json::object(), "\"reports\" is not an array"},
        {list(5), "a report is not a JSON object"},
        {list(json::object()), "a report lacks \"kind\""},
        {list(with(text(2, "b"), "kind", "speech")),
         "a report's \"kind\" is not \"opened\", \"view\", \"key\", \"text\", \"message\" or \"device\""},
        {list(with(text(2, "b"), "kind", 1)),
         "a report's \"kind\" is not \"opened\", \"view\", \"key\", \"text\", \"message\" or \"device\""},
        {list(text(2, "b"), without(text(3, "c"), "text")), "a report lacks \"text\""},
        {list(text(2, "b"), with(text(3, "c"), "text", nullptr)), "\"text\" is not a string"},
        {list(with(text(2, "b"), "colour", "red")), "a report holds an unknown key \"colour\""},
        {list(without(text(2, "b"), "number")), "a report lacks \"number\""},
        {list(with(text(2, "b"), "number", -2)), "\"number\" is not a whole number from 0 on"},
        {list(with(text(2, "b"), "number", 2.5)), "\"number\" is not a whole number from 0 on"},
        {list(text(0, "b")), "the reports' numbers do not ascend from 1"},
        {list(text(3, "b"), text(3, "c")), "the reports' numbers do not ascend from 1"},
        {list(text(3, "b"), text(2, "c")), "the reports' numbers do not ascend from 1"},
        {list(text(2, std::string(4001, 'b'))), "\"text\" is longer than 4000 bytes"},
        {list(withNumber(2, with(view("view"), "visible", "yes"))), "\"visible\" is not a boolean"},
        {list(withNumber(2, without(view("opened"), "height"))), "a report lacks \"height\""},
        {list(withNumber(2, device("screen", "live"))), "\"device\" is not \"camera\" or \"microphone\""},
        {list(withNumber(2, device("camera", "on"))),
         "\"state\" is not \"granted\", \"live\", \"refused\", \"missing\", \"failed\" or \"ended\""},
        {list(withNumber(2, without(device("camera", "live"), "detail"))), "a report lacks \"detail\""},
        {list(withNumber(2, with(device("camera", "live"), "detail", std::string(4001, 'd')))),
         "\"detail\" is longer than 4000 bytes"},
        {list(withNumber(2, without(key("q"), "meta"))), "a report lacks \"meta\""},
        {list(withNumber(2, key(std::string(65, 'q')))), "\"key\" is longer than 64 bytes"},
        {list(withNumber(2, with(key("q"), "code", std::string(65, 'q')))), "\"code\" is longer than 64 bytes"},
    };
    for (const auto& [reports, message] : wrong) {
        const PracticeReply reply = send(reports);
        EXPECT_EQ(reply.status, 400) << reports;
        EXPECT_EQ(parsed(reply), json({{"error", "invalid_report"}, {"message", message}})) << reports;
    }
    for (const std::string page : {"", "a b", "à", "<b>"})
        EXPECT_EQ(send(list(text(2, "b")), page).status, 400) << page;
    EXPECT_EQ(send(list(text(2, "b")), std::string(65, 'a')).status, 400);
    for (const std::string body : {"", "[]", "null", "{", "{}", "{\"page\":\"a1\"}", "\xFF"}) {
        EXPECT_EQ(server.handle(post("/meet/PROVA/reports", body)).status, 400) << body;
    }
    EXPECT_EQ(shortList(), (std::vector<std::string>{"1.1 a"}));
    // Nor did any of them add a page.
    send(list(text(1, "b")), "b2");
    EXPECT_EQ(listed()[1]["page"], 2);
}

TEST_F(PageReports, AreTakenUpToTheirGreatestSize) {
    EXPECT_EQ(
        send(list(text(1, std::string(4000, 'b')), withNumber(2, key(std::string(64, 'q')))), std::string(64, 'a'))
            .status,
        200);
    std::string body = json({{"page", "a1"}, {"reports", list(text(1, "a"))}}).dump();
    body.resize(65536, ' ');
    EXPECT_EQ(server.handle(post("/meet/PROVA/reports", body)).status, 200);
    const PracticeReply reply = server.handle(post("/meet/PROVA/reports", body + ' '));
    EXPECT_EQ(reply.status, 400);
    EXPECT_EQ(parsed(reply)["message"], "the body is longer than 65536 bytes");
}

TEST_F(PageReports, AreForgottenFromTheOldestOnBeyondFiveThousand) {
    for (std::uint64_t number = 1; number <= 5003; ++number) send(list(text(number, "x")));
    const auto entries = server.pageReports();
    ASSERT_EQ(entries.size(), 5000U);
    EXPECT_EQ(entries.front().report.number, 4U);
    EXPECT_EQ(entries.back().report.number, 5003U);
}

TEST_F(PageReports, CountAForgottenPageAsANewOne) {
    for (int page = 1; page <= 257; ++page) send(list(text(1, "x")), std::to_string(page));
    send(list(text(2, "x")), "2");
    send(list(text(2, "x")), "1");
    const auto entries = server.pageReports();
    ASSERT_EQ(entries.size(), 259U);
    EXPECT_EQ(entries[256].page, 257U);
    EXPECT_EQ(entries[257].page, 2U);
    EXPECT_EQ(entries[258].page, 258U);
}

TEST_F(PageReports, AreNeitherRecordedNorBent) {
    server.handle(post("/control/reply-rule", R"({"path":"*","status":500,"dropConnection":true})"));
    const PracticeReply reply = send(list(text(1, "a")));
    EXPECT_EQ(reply.status, 200);
    EXPECT_FALSE(reply.dropConnection);
    EXPECT_EQ(reply.exchange, 0U);
    EXPECT_EQ(parsed(server.handle(get("/control/received"))), json::array());
    EXPECT_EQ(parsed(server.handle(get("/control/state")))["replyRules"][0]["used"], 0);
}

TEST_F(PageReports, GoWithAResetThatNamesThemOrNothing) {
    send(list(text(1, "a")));
    server.handle(post("/control/reset", R"({"only":["replyRules","received","sessions"]})"));
    EXPECT_EQ(listed().size(), 1U);
    joined(server, "PROVA");
    EXPECT_EQ(server.handle(post("/control/reset", R"({"only":["reports"]})")).status, 200);
    EXPECT_EQ(listed(), json::array());
    EXPECT_EQ(server.participants().size(), 1U);

    send(list(text(2, "b")));
    send(list(text(1, "c")), "b2");
    EXPECT_EQ(shortList(), (std::vector<std::string>{"1.2 b", "2.1 c"}));
    server.handle(post("/control/reset", ""));
    EXPECT_EQ(listed(), json::array());
}

}  // namespace
}  // namespace vantrel::practice::test
