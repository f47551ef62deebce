#include <string>
#include <string_view>

#include "tests/linux/network/CompressedBody.h"
#include "tests/linux/network/OneAnswerServer.h"
#include "tests/linux/network/URLSessionTest.h"

namespace vantrel::linuxdesktop {
namespace {

constexpr std::size_t mostBytes = std::size_t{64} << 20;

class LinuxURLSessionEncoding : public URLSessionTest {
  protected:
    static std::string answer(std::string_view encoding, const std::string& body) {
        return "HTTP/1.1 200 OK\r\nContent-Encoding: " + std::string(encoding) +
               "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
    }
};

TEST_F(LinuxURLSessionEncoding, HandsACompressedBodyOverAsItWas) {
    std::string text;
    for (int number = 0; text.size() < 1'000'000; ++number) text += std::to_string(number) + " è\n";
    for (const char* encoding : {"gzip", "deflate", "GZIP", "x-gzip"}) {
        const OneAnswerServer server(answer(encoding, compressed(encoding, text)));
        const URLReply answered = reply(request(server.address()));
        EXPECT_FALSE(answered.error) << encoding;
        EXPECT_EQ(answered.statusCode, 200);
        EXPECT_TRUE(answered.data == text) << encoding;
        const std::string sent = server.newestRequest();
        EXPECT_NE(sent.find("\r\nAccept-Encoding: gzip, deflate\r\n"), std::string::npos) << sent;
    }
}

TEST_F(LinuxURLSessionEncoding, HandsACompressedBodyOfAnErrorOverToo) {
    std::string refused = answer("gzip", compressed("gzip", R"({"error":"no"})"));
    refused.replace(refused.find("200 OK"), 6, "409 No");
    const OneAnswerServer server(refused);
    const URLReply answered = reply(request(server.address()));
    EXPECT_EQ(answered.statusCode, 409);
    EXPECT_EQ(answered.data, R"({"error":"no"})");
}

TEST_F(LinuxURLSessionEncoding, TakesAGzipBodyOfSeveralPartsAndADeflateBodyWithoutItsHeader) {
    const OneAnswerServer parts(answer("gzip", compressed("gzip", "one ") + compressed("gzip", "two")));
    EXPECT_EQ(reply(request(parts.address())).data, "one two");
    const std::string wrapped = compressed("deflate", "bare");
    constexpr std::size_t header = 2;
    constexpr std::size_t checksum = 4;
    const OneAnswerServer bare(answer("deflate", wrapped.substr(header, wrapped.size() - header - checksum)));
    EXPECT_EQ(reply(request(bare.address())).data, "bare");
}

TEST_F(LinuxURLSessionEncoding, TreatsNoBytesAndWhatUnpacksToNoneAsNoBody) {
    for (const std::string& body : {std::string(), compressed("gzip", "")}) {
        const OneAnswerServer server(answer("gzip", body));
        const URLReply answered = reply(request(server.address()));
        EXPECT_EQ(answered.statusCode, 200);
        EXPECT_FALSE(answered.error);
        EXPECT_FALSE(answered.data);
    }
}

TEST_F(LinuxURLSessionEncoding, FailsAnEncodingThatNobodyAskedFor) {
    for (const char* encoding : {"br", "gzip, gzip", "unknown"}) {
        const OneAnswerServer server(answer(encoding, compressed("gzip", "x")));
        EXPECT_EQ(errorOf(reply(request(server.address()))), "Impossibile analizzare la risposta.") << encoding;
    }
}

TEST_F(LinuxURLSessionEncoding, RefusesABodyThatUnpacksToMoreThan64MiBAndTakesOneOfThatSize) {
    const OneAnswerServer largest(answer("gzip", compressed("gzip", std::string(mostBytes, 'x'))));
    const OneAnswerServer tooLarge(answer("gzip", compressed("gzip", std::string(mostBytes + 1, 'x'))));
    const URLReply answered = reply(request(largest.address()));
    ASSERT_TRUE(answered.data);
    EXPECT_EQ(answered.data->size(), mostBytes);
    EXPECT_EQ(errorOf(reply(request(tooLarge.address()))), "La risposta del server è troppo grande.");
}

TEST_F(LinuxURLSessionEncoding, FailsWhatIsNotWhatItsEncodingSays) {
    const std::string whole = compressed("gzip", std::string(100'000, 'x'));
    std::string spoilt = whole;
    spoilt[whole.size() - 6] = static_cast<char>(~spoilt[whole.size() - 6]);
    for (const std::string& body :
         {std::string("not compressed at all"), spoilt, whole + "after", std::string("\x1f\x8b\x08\xff", 4)}) {
        const OneAnswerServer server(answer("gzip", body));
        EXPECT_EQ(errorOf(reply(request(server.address()))), "Impossibile analizzare la risposta.");
    }
}

// The body of a redirect is not what was asked for.
TEST_F(LinuxURLSessionEncoding, FollowsARedirectWhoseOwnBodyCannotBeRead) {
    const OneAnswerServer target(answer("identity", "here"));
    std::string moved = answer("gzip", "not compressed at all");
    moved.replace(moved.find("200 OK"), 6, "302 Found\r\nLocation: " + target.address());
    const OneAnswerServer server(moved);
    const URLReply answered = reply(request(server.address()));
    EXPECT_FALSE(answered.error);
    EXPECT_EQ(answered.statusCode, 200);
    EXPECT_EQ(answered.data, "here");
}

TEST_F(LinuxURLSessionEncoding, FailsACompressedBodyWithoutItsEnd) {
    const std::string whole = compressed("gzip", std::string(100'000, 'x'));
    for (const std::size_t length : {std::size_t{5}, whole.size() / 2, whole.size() - 1}) {
        const OneAnswerServer server(answer("gzip", whole.substr(0, length)));
        EXPECT_EQ(errorOf(reply(request(server.address()))), "Impossibile analizzare la risposta.") << length;
    }
}

}  // namespace
}  // namespace vantrel::linuxdesktop
