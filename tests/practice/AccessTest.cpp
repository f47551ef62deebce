#include <gtest/gtest.h>

#include "Requests.h"
#include "practice/messages/Base64.h"

namespace vantrel::practice::test {
namespace {

/// Who may use the trainer's page and the control interface.
class Access : public testing::Test {
  protected:
    static PracticeConfiguration withPassword(const std::string& password) {
        PracticeConfiguration configuration = fourSessions();
        configuration.trainerPassword = password;
        return configuration;
    }

    static PracticeConfiguration withPublicAddress(const std::string& address) {
        PracticeConfiguration configuration = fourSessions();
        configuration.publicAddress = address;
        return configuration;
    }

    using Headers = std::vector<std::pair<std::string, std::string>>;

    static PracticeReply ending(PracticeServer& server, const Headers& headers) {
        return server.handle({"POST", "/trainer/end/PROVA", headers, ""});
    }

    static Headers withAuthorization(const std::string& value) {
        return {{"Host", "127.0.0.1:8787"}, {"Authorization", value}};
    }

    static bool isActive(PracticeServer& server) { return server.sessions()[0].status == SessionStatus::active; }

    PracticeServer server{fourSessions(), [] { return standingTime; }};
};

TEST_F(Access, APageOfAnotherSiteEndsNoSession) {
    for (const std::string origin :
         {"http://evil.example", "null", "https://127.0.0.1:8787", "http://127.0.0.1:8788", "http://127.0.0.1",
          "http://localhost:8787", "http://127.0.0.1:8787.evil.example"}) {
        for (const std::string path : {"/trainer/end/PROVA", "/control/end/PROVA"}) {
            const PracticeReply reply =
                server.handle({"POST", path, {{"Host", "127.0.0.1:8787"}, {"Origin", origin}}, ""});
            EXPECT_EQ(reply.status, 403) << origin << path;
            EXPECT_EQ(parsed(reply)["error"], "foreign_origin") << origin << path;
        }
    }
    EXPECT_TRUE(isActive(server));
}

TEST_F(Access, APageOfAnotherSiteNeitherChangesRepliesNorResetsNorReads) {
    joined(server, "PROVA");
    const Headers foreign{{"Host", "127.0.0.1:8787"}, {"Origin", "http://evil.example"}};
    EXPECT_EQ(server.handle({"POST", "/control/reply-rule", foreign, R"({"path":"*","status":500})"}).status, 403);
    EXPECT_EQ(server.handle({"POST", "/control/reset", foreign, ""}).status, 403);
    for (const std::string path : {"/", "/trainer/state", "/control/state", "/control/received", "/control/reports",
                                   "/control/participants/practice-1"}) {
        const PracticeReply reply = server.handle({"GET", path, foreign, ""});
        EXPECT_EQ(reply.status, 403) << path;
        EXPECT_EQ(reply.body.find("Anna"), std::string::npos) << path;
    }
    EXPECT_EQ(server.participants().size(), 1U);
    EXPECT_TRUE(parsed(server.handle(get("/control/state")))["replyRules"].empty());
}

TEST_F(Access, ANameThatAnotherSiteMadeLeadHereIsNotServed) {
    for (const std::string host :
         {"evil.example:8787", "evil.example", "127.0.0.1.evil.example:8787", "localhost.evil.example", "1.2.3.x", "",
          ":8787", "[evil.example]:8787", "[]:8787", "127.0.0.1@evil.example", "12.34.56", "localhost.:8787"}) {
        EXPECT_EQ(ending(server, {{"Host", host}}).status, 403) << host;
        EXPECT_EQ(ending(server, {{"Host", host}, {"Origin", "http://" + host}}).status, 403) << host;
        const PracticeReply reply = server.handle({"GET", "/control/state", {{"Host", host}}, ""});
        EXPECT_EQ(parsed(reply)["error"], "foreign_host") << host;
    }
    EXPECT_EQ(ending(server, {}).status, 403);
    EXPECT_TRUE(isActive(server));
}

TEST_F(Access, ItsOwnPageAndProgramsMayDoEverything) {
    for (const std::string host : {"127.0.0.1:8787", "localhost:4000", "LOCALHOST", "192.168.1.20:8787", "[::1]:8787",
                                   "[fe80::1]", "10.0.0.1"}) {
        for (const Headers& headers :
             {Headers{{"Host", host}}, Headers{{"Host", host}, {"Origin", "http://" + host}}}) {
            server.handle(post("/control/reset", ""));
            EXPECT_EQ(ending(server, headers).status, 200) << host;
            EXPECT_FALSE(isActive(server)) << host;
        }
    }
}

TEST_F(Access, ThePublicAddressIsTheServersOwn) {
    PracticeServer known(withPublicAddress("https://Aula.example.org/prova/"), [] { return standingTime; });
    EXPECT_EQ(ending(known, {{"Host", "aula.example.org"}, {"Origin", "https://aula.example.org"}}).status, 200);
    EXPECT_EQ(ending(known, {{"Host", "127.0.0.1:8787"}, {"Origin", "https://aula.example.org"}}).status, 200);
    EXPECT_EQ(ending(known, {{"Host", "aula.example.org:8443"}}).status, 200);
    EXPECT_EQ(ending(known, {{"Host", "example.org"}}).status, 403);
    EXPECT_EQ(ending(known, {{"Host", "127.0.0.1"}, {"Origin", "https://example.org"}}).status, 403);
    PracticeServer odd(withPublicAddress("aula"), [] { return standingTime; });
    EXPECT_EQ(ending(odd, {{"Host", ""}}).status, 403);
    EXPECT_EQ(ending(odd, {{"Host", "127.0.0.1"}, {"Origin", ""}}).status, 200);
}

TEST_F(Access, ClientsAndMeetingPagesAreServedUnderAnyName) {
    const Headers foreign{{"Host", "evil.example"}, {"Origin", "http://evil.example"}};
    EXPECT_EQ(server.handle({"GET", "/api/sessions/PROVA", foreign, ""}).status, 200);
    EXPECT_EQ(server.handle({"GET", "/meet/PROVA", foreign, ""}).status, 200);
    EXPECT_EQ(server.handle({"GET", "/pages/meeting.js", foreign, ""}).status, 200);
}

TEST_F(Access, WithAPasswordTheTrainersPageAndTheControlInterfaceAskForIt) {
    PracticeServer secured(withPassword("un segreto: sì"), [] { return standingTime; });
    for (const std::string path : {"/", "/trainer/state", "/control/state", "/control/received", "/control/reports"}) {
        const PracticeReply reply = secured.handle(get(path));
        EXPECT_EQ(reply.status, 401) << path;
        EXPECT_EQ(reply.headers, (Headers{{"WWW-Authenticate", "Basic realm=\"Vantrel\", charset=\"UTF-8\""}}));
        EXPECT_EQ(reply.delaySeconds, 0) << path;
    }
    EXPECT_EQ(ending(secured, {{"Host", "127.0.0.1:8787"}}).status, 401);
    EXPECT_TRUE(isActive(secured));
    for (const std::string scheme : {"Basic ", "basic ", "BASIC "}) {
        secured.handle({"POST", "/control/reset", withAuthorization("Basic " + toBase64("x:un segreto: sì")), ""});
        EXPECT_EQ(ending(secured, withAuthorization(scheme + toBase64("anyone:un segreto: sì"))).status, 200);
        EXPECT_FALSE(isActive(secured));
    }
}

TEST_F(Access, AWrongPasswordIsRefusedAndCostsASecond) {
    PracticeServer secured(withPassword("segretissimo"), [] { return standingTime; });
    for (const std::string given : {"", "segretissim", "segretissimo ", "Segretissimo", "segretissimosegretissimo"}) {
        const PracticeReply reply = ending(secured, withAuthorization("Basic " + toBase64("x:" + given)));
        EXPECT_EQ(reply.status, 401) << given;
        EXPECT_EQ(reply.delaySeconds, 1) << given;
    }
    const std::vector<std::string> noPasswords{"segretissimo",
                                               "Basic",
                                               "Basic ",
                                               "Basic segretissimo",
                                               "Bearer " + toBase64("x:segretissimo"),
                                               "Basic " + toBase64("segretissimo"),
                                               "Basic  " + toBase64("x:segretissimo")};
    for (const std::string& given : noPasswords) {
        EXPECT_EQ(ending(secured, withAuthorization(given)).status, 401) << given;
    }
    EXPECT_TRUE(isActive(secured));
}

TEST_F(Access, AKnownPasswordDoesNotLetAnotherSiteIn) {
    PracticeServer secured(withPassword("segretissimo"), [] { return standingTime; });
    Headers headers = withAuthorization("Basic " + toBase64("x:segretissimo"));
    headers.emplace_back("Origin", "http://evil.example");
    EXPECT_EQ(ending(secured, headers).status, 403);
    EXPECT_TRUE(isActive(secured));
}

TEST_F(Access, ParticipantsNeedNoPassword) {
    PracticeServer secured(withPassword("segretissimo"), [] { return standingTime; });
    const std::string token = joined(secured, "PROVA");
    EXPECT_EQ(secured.handle(post("/api/heartbeat", heartbeatBody("PROVA", token).dump())).status, 200);
    EXPECT_EQ(secured.handle(get("/meet/PROVA")).status, 200);
    EXPECT_EQ(secured.handle(get("/pages/meeting.css")).status, 200);
    const std::string report = R"({"page":"a","reports":[{"number":1,"kind":"text","text":"x"}]})";
    EXPECT_EQ(secured.handle(post("/meet/PROVA/reports", report)).status, 200);
}

}  // namespace
}  // namespace vantrel::practice::test
