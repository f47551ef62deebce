#include <gmock/gmock.h>

#include "server/VersionCheck.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using virtualmac::NetworkAnswer;
using virtualmac::NotHTTP;

class VersionCheckTest : public virtualmac::MacTest {
  protected:
    VersionCheck check() {
        const auto& c = computer();
        return VersionCheck(ServerRequests(c.dispatch, c.urls, c.json, c.urlSession), c.urls, c.log);
    }

    std::string address(const std::string& version) {
        mac().onMain([&] { check().send("https://server.example", version, [](const URLReply&) {}); });
        mac().runFor(1);
        return mac().network().sent().back().request.url.absoluteString;
    }
};

constexpr const char* available = R"({"updateAvailable":true,"severity":"required","latestVersion":"3"})";

TEST_F(VersionCheckTest, PercentEncodesWhatAQueryDoesNotAllow) {
    EXPECT_EQ(address("2.0-macOS"), "https://server.example/api/version/latest?os=macos&current=2.0-macOS");
    EXPECT_EQ(address("2 è"), "https://server.example/api/version/latest?os=macos&current=2%20%C3%A8");
}

TEST_F(VersionCheckTest, TakesTheVersionAsItIsWhenItCannotBeEncoded) {
    mac().urls().failEncodingWhere([](std::string_view) { return true; });
    EXPECT_EQ(address("2.0"), "https://server.example/api/version/latest?os=macos&current=2.0");
}

TEST_F(VersionCheckTest, ReadsAnOfferFromStatus200Only) {
    EXPECT_TRUE(check().read({{}, 200, available}));
    for (const int status : {201, 204, 304, 400, 404, 500}) {
        forgetEvents();
        EXPECT_FALSE(check().read({{}, status, available})) << status;
        EXPECT_THAT(logLines(), ElementsAre("[UPDATE] Check: risposta non valida"));
    }
}

TEST_F(VersionCheckTest, ReadsTheFourTextsOfAnOffer) {
    const auto* whole = R"({"updateAvailable":true,"severity":"required","latestVersion":"3","releaseNotes":"N",)"
                        R"("downloadUrl":"D"})";
    EXPECT_EQ(check().read({{}, 200, whole}), (UpdateOffer{"required", "3", "N", "D"}));
    EXPECT_THAT(logLines(), ElementsAre("[UPDATE] Disponibile v3 (severity=required)"));
}

TEST_F(VersionCheckTest, LeavesEmptyWhatAnOfferDoesNotSay) {
    EXPECT_EQ(check().read({{}, 200, R"({"updateAvailable":true})"}), (UpdateOffer{"info", "", "", ""}));
    EXPECT_THAT(logLines(), ElementsAre("[UPDATE] Disponibile v (severity=info)"));
}

TEST_F(VersionCheckTest, DoesNotReadAResponseThatIsNotHTTP) {
    EXPECT_FALSE(check().read({{}, {}, available}));
    EXPECT_THAT(logLines(), ElementsAre("[UPDATE] Check: risposta non valida"));
}

TEST_F(VersionCheckTest, TakesA200WithoutABodyForInvalid) {
    EXPECT_FALSE(check().read({{}, 200, {}}));
    EXPECT_THAT(logLines(), ElementsAre("[UPDATE] Check: risposta non valida"));
}

TEST_F(VersionCheckTest, ReadsTheOtherKeysOnlyWhenAnUpdateIsAvailable) {
    EXPECT_FALSE(check().read({{}, 200, R"({"updateAvailable":"true","severity":"required","latestVersion":"3"})"}));
    EXPECT_THAT(logLines(), ElementsAre("[UPDATE] Versione corrente è l'ultima disponibile"));
}

}  // namespace
}  // namespace vantrel
