#include <gtest/gtest.h>

#include "Requests.h"

namespace vantrel::practice::test {
namespace {

class VersionCheck : public testing::Test {
  protected:
    static PracticeConfiguration configuration() {
        PracticeConfiguration configuration = fourSessions();
        configuration.version.latest = "2.1-macOS";
        configuration.version.severity = "required";
        configuration.version.releaseNotes = "Novità";
        configuration.version.downloadUrl = "https://download.example.org";
        return configuration;
    }

    PracticeServer server{configuration(), [] { return standingTime; }};
};

TEST_F(VersionCheck, OffersANewerVersion) {
    const PracticeReply reply = server.handle(get("/api/version/latest?os=macos&current=2.0-macOS"));
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(parsed(reply), nlohmann::json({{"updateAvailable", true},
                                             {"severity", "required"},
                                             {"latestVersion", "2.1-macOS"},
                                             {"releaseNotes", "Novità"},
                                             {"downloadUrl", "https://download.example.org"}}));
}

TEST_F(VersionCheck, OffersTheVersionThatIsSetLater) {
    VersionConfiguration later;
    later.latest = "3.0-macOS";
    later.severity = "info";
    server.setVersion(later);
    server.reset();
    EXPECT_EQ(parsed(server.handle(get("/api/version/latest?os=macos&current=2.0-macOS"))),
              nlohmann::json({{"updateAvailable", true},
                              {"severity", "info"},
                              {"latestVersion", "3.0-macOS"},
                              {"releaseNotes", ""},
                              {"downloadUrl", ""}}));
}

TEST_F(VersionCheck, OffersNothingToTheNewest) {
    const nlohmann::json nothing{{"updateAvailable", false}};
    EXPECT_EQ(parsed(server.handle(get("/api/version/latest?os=macos&current=2.1%2DmacOS"))), nothing);
    EXPECT_EQ(parsed(server.handle(get("/api/version/latest?os=macos&current=2.10"))), nothing);
    EXPECT_EQ(parsed(server.handle(get("/api/version/latest?current=1.0&os=windows"))), nothing);
}

TEST_F(VersionCheck, OffersNothingWithoutANewestVersion) {
    PracticeServer silent(fourSessions(), [] { return standingTime; });
    EXPECT_EQ(parsed(silent.handle(get("/api/version/latest?os=macos&current=2.0-macOS"))),
              nlohmann::json({{"updateAvailable", false}}));
}

TEST_F(VersionCheck, RefusesAQueryWithoutSystemOrVersion) {
    for (const std::string query : {"", "?", "?os=macos", "?current=2.0", "?os=&current=2.0", "?os=macos&current=due",
                                    "?os=macos&current=", "?os=macos&current=2.%"}) {
        const PracticeReply reply = server.handle(get("/api/version/latest" + query));
        EXPECT_EQ(reply.status, 400) << query;
        EXPECT_EQ(parsed(reply)["error"], "invalid_query") << query;
    }
}

}  // namespace
}  // namespace vantrel::practice::test
