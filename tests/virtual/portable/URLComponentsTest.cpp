#include <gtest/gtest.h>

#include "platform/portable/URLComponents.h"

namespace vantrel {
namespace {

TEST(URLComponents, JoinsBackWhatItSplit) {
    for (const char* text : {"http://u@h:1/p/q?r#s", "//h", "a:b", "?", "#", "p?q?r#s?t", "http://h?", "/a:b"}) {
        EXPECT_EQ(text, URLComponents::split(text).joined());
    }
}

TEST(URLComponents, KnowsTheSchemeInLowerCase) {
    EXPECT_EQ("https", scheme(URL{"HTTPS://a"}));
    EXPECT_EQ(std::nullopt, scheme(URL{"a/b:c"}));
    EXPECT_EQ("localhost", scheme(URL{"localhost:80"}));
}

TEST(URLComponents, NameTheTargetOfARequest) {
    const std::pair<const char*, const char*> cases[] = {{"http://h", "/"},
                                                         {"http://h/", "/"},
                                                         {"http://h?x", "/?x"},
                                                         {"http://h#x", "/"},
                                                         {"http://u:p@h:1//a/../b//", "//a/../b//"},
                                                         {"http://h/%41%2fB?c?#d", "/%41%2fB?c?"},
                                                         {"http://h?", "/?"}};
    for (const auto& [address, expected] : cases) EXPECT_EQ(expected, requestTarget(URL{address})) << address;
}

TEST(URLComponents, ResolvesReferences) {
    const URL base{"http://a/b/c/d;p?q"};
    const std::pair<const char*, const char*> cases[] = {{"g:h", "g:h"},
                                                         {"g", "http://a/b/c/g"},
                                                         {"./g", "http://a/b/c/g"},
                                                         {"g/", "http://a/b/c/g/"},
                                                         {"/g", "http://a/g"},
                                                         {"//g", "http://g"},
                                                         {"?y", "http://a/b/c/d;p?y"},
                                                         {"g?y#s", "http://a/b/c/g?y#s"},
                                                         {"", "http://a/b/c/d;p?q"},
                                                         {".", "http://a/b/c/"},
                                                         {"..", "http://a/b/"},
                                                         {"../..", "http://a/"},
                                                         {"../../../g", "http://a/g"},
                                                         {"/./g", "http://a/g"},
                                                         {"g.", "http://a/b/c/g."},
                                                         {"./g/.", "http://a/b/c/g/"},
                                                         {"g/../h", "http://a/b/c/h"},
                                                         {"#s", "http://a/b/c/d;p?q#s"}};
    for (const auto& [reference, expected] : cases) EXPECT_EQ(expected, resolved(base, reference)) << reference;
    EXPECT_EQ("http://h/x", resolved(URL{"http://h"}, "x"));
}

}  // namespace
}  // namespace vantrel
