#include <gtest/gtest.h>

#include <string>

#include "platform/portable/PortableURLs.h"

namespace vantrel {
namespace {

void expectFormed(std::string_view text) {
    const auto url = PortableURLs().form(text);
    ASSERT_TRUE(url) << text;
    EXPECT_EQ(text, url->absoluteString);
}

void expectRefused(std::string_view text) {
    EXPECT_FALSE(PortableURLs().form(text)) << text;
}

TEST(URLs, FormsWhatTheGrammarAllows) {
    for (const char* text : {"http://localhost:3000/api/sessions/ABC",
                             "https://a.example/b?c=d&e=%C3%A8#f",
                             "http://u:p@h:80/",
                             "http://h:",
                             "http://[::1]:8080/x",
                             "http://[2001:db8::7:127.0.0.1]/",
                             "http://[v1.a:b]/",
                             "http://",
                             "mailto:a@b",
                             "x+y-1.z:opaque",
                             "//host/path",
                             "/path:with/colon",
                             "?query",
                             "#fragment",
                             "a/b:c",
                             "%41%20",
                             "a;b=c,d!$&'()*+",
                             "http://h/?a/b?c",
                             "file:///x",
                             "http://1.2.3.4.5/",
                             "http://%41/"}) {
        expectFormed(text);
    }
}

TEST(URLs, FormsATextWithoutAScheme) {
    for (const char* text : {"server.example/api", "localhost", "b"}) expectFormed(text);
}

TEST(URLs, RefusesAnEmptyText) {
    expectRefused("");
}

TEST(URLs, RefusesCharactersThatHaveToBeEncoded) {
    for (const char* text : {"http://a b", " http://a", "http://a\n", "http://à.example/", "http://a/è", "a\tb", "a\"b",
                             "a<b", "a>b", "a\\b", "a^b", "a`b", "a{b", "a|b", "a}b", "a\x7f"}) {
        expectRefused(text);
    }
    expectRefused(std::string_view("a\0b", 3));
}

TEST(URLs, RefusesABrokenTriplet) {
    for (const char* text : {"%", "%4", "%zz", "http://a/%4", "http://a/%g1", "a%"}) expectRefused(text);
}

TEST(URLs, RefusesABrokenSchemeOrAuthority) {
    for (const char* text : {":a",
                             "1a:b",
                             "à:b",
                             "127.0.0.1:80/x",
                             "http://h:8a/",
                             "http://h:80:90/",
                             "http://a@b@c/",
                             "http://[::1",
                             "http://::1]/",
                             "http://[::1]x/",
                             "http://[::1]:x/",
                             "http://[1:2:3]/",
                             "http://[1::2::3]/",
                             "http://[1:2:3:4:5:6:7:8:9]/",
                             "http://[g::]/",
                             "http://[::1.2.3]/",
                             "http://[::256.1.1.1]/",
                             "http://[12345::]/",
                             "http://[v.a]/",
                             "http://[v1.]/",
                             "http://h[/"}) {
        expectRefused(text);
    }
}

TEST(URLs, RefusesBracketsAndASecondHashOutsideOfTheAuthority) {
    for (const char* text : {"http://h/[a]", "http://h/?a[]=1", "http://h/#a#b", "#[", "a]"}) expectRefused(text);
}

TEST(URLs, EncodesWhatAQueryDoesNotAllow) {
    EXPECT_EQ("2.0-macOS", PortableURLs().addingPercentEncodingForQuery("2.0-macOS"));
    EXPECT_EQ("a%20b%25%23%5B%5D%22%3C%3E%5C%5E%60%7B%7C%7D%7F%01%0A%C3%A8%F0%9F%94%92",
              PortableURLs().addingPercentEncodingForQuery("a b%#[]\"<>\\^`{|}\x7f\x01\nè🔒"));
    EXPECT_EQ("AZaz09-._~!$&'()*+,;=:@/?", PortableURLs().addingPercentEncodingForQuery("AZaz09-._~!$&'()*+,;=:@/?"));
    EXPECT_EQ("", PortableURLs().addingPercentEncodingForQuery(""));
}

TEST(URLs, EncodesNothingThatIsNotUTF8) {
    EXPECT_FALSE(PortableURLs().addingPercentEncodingForQuery("a\xff"));
}

}  // namespace
}  // namespace vantrel
