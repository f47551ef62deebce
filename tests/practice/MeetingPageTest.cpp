#include <gtest/gtest.h>

#include "Requests.h"

namespace vantrel::practice::test {
namespace {

bool contains(const PracticeReply& reply, const std::string& text) {
    return reply.body.find(text) != std::string::npos;
}

TEST(MeetingPage, ShowsTitleCodeAndWhoJoined) {
    PracticeServer server(fourSessions(), [] { return standingTime; });
    joined(server, "PROVA");
    const PracticeReply reply = server.handle(get("/meet/PROVA"));
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.contentType, "text/html; charset=utf-8");
    EXPECT_TRUE(contains(reply, "<html lang=\"it\">"));
    EXPECT_TRUE(contains(reply, "<title>Sicurezza</title>"));
    EXPECT_TRUE(contains(reply, "<h1>Sicurezza</h1>"));
    EXPECT_TRUE(contains(reply, "PROVA"));
    EXPECT_TRUE(contains(reply, "Anna Però"));
    EXPECT_FALSE(contains(server.handle(get("/meet/ATTESA")), "Anna Però"));
}

TEST(MeetingPage, EscapesWhatCameFromOutside) {
    PracticeConfiguration configuration = fourSessions();
    configuration.sessions[0].title = "</h1><script>\"'&";
    PracticeServer server(configuration, [] { return standingTime; });
    nlohmann::json body = joinBody();
    body["fullName"] = "<img src=x>";
    server.handle(post("/api/sessions/PROVA/join", body.dump()));
    const PracticeReply reply = server.handle(get("/meet/PROVA"));
    EXPECT_TRUE(contains(reply, "<h1>&lt;/h1&gt;&lt;script&gt;&quot;&#39;&amp;</h1>"));
    EXPECT_TRUE(contains(reply, "&lt;img src=x&gt;"));
    EXPECT_FALSE(contains(reply, "<img"));

    const PracticeReply unknown = server.handle(get("/meet/<script>"));
    EXPECT_EQ(unknown.status, 404);
    EXPECT_TRUE(contains(unknown, "&lt;script&gt;"));
}

TEST(MeetingPage, HasAFieldForMessagesAsLongAsTheSessionStands) {
    PracticeServer server(fourSessions(), [] { return standingTime; });
    EXPECT_TRUE(contains(server.handle(get("/meet/PROVA")), "placeholder=\"Scrivi un messaggio\""));
    EXPECT_FALSE(contains(server.handle(get("/meet/CHIUSA")), "<input"));
    EXPECT_FALSE(contains(server.handle(get("/meet/ALTRA")), "<script"));
}

TEST(MeetingPage, IsFoundInAnyCase) {
    PracticeServer server(fourSessions(), [] { return standingTime; });
    EXPECT_EQ(server.handle(get("/meet/prova?utm=1")).status, 200);
}

TEST(MeetingPage, TellsThatTheSessionHasEnded) {
    PracticeServer server(fourSessions(), [] { return standingTime; });
    EXPECT_TRUE(contains(server.handle(get("/meet/CHIUSA")), "La lezione è terminata"));
    EXPECT_FALSE(contains(server.handle(get("/meet/PROVA")), "La lezione è terminata"));
}

TEST(MeetingPage, TellsPeopleThatACodeIsUnknown) {
    PracticeServer server(fourSessions(), [] { return standingTime; });
    const PracticeReply reply = server.handle(get("/meet/ALTRA"));
    EXPECT_EQ(reply.status, 404);
    EXPECT_EQ(reply.contentType, "text/html; charset=utf-8");
    EXPECT_TRUE(contains(reply, "Riunione non trovata"));
    EXPECT_TRUE(contains(reply, "ALTRA"));
}

TEST(MeetingPage, LearnsTheStateOfItsSessionInAnExchangeThatIsNeitherRecordedNorChanged) {
    PracticeServer server(fourSessions(), [] { return standingTime; });
    server.handle(post("/control/reply-rule", R"({"path":"*","status":500,"body":""})"));
    EXPECT_EQ(server.handle(get("/meet/prova/state")).body, R"({"status":"ACTIVE"})");
    server.endSession("PROVA");
    EXPECT_EQ(server.handle(get("/meet/PROVA/state")).body, R"({"status":"ENDED"})");
    EXPECT_EQ(server.handle(get("/meet/ALTRA/state")).status, 404);
    EXPECT_EQ(server.handle(post("/meet/PROVA/state", "")).status, 405);
    EXPECT_TRUE(server.received().empty());
}

}  // namespace
}  // namespace vantrel::practice::test
