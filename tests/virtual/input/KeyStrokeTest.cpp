#include <gtest/gtest.h>

#include "platform/virtual/keyboard/KeyStroke.h"

namespace vantrel::virtualmac {
namespace {

TEST(KeyStroke, IsReadWithItsModifiersInAnyOrder) {
    EXPECT_EQ((KeyStroke{12, KeyStroke::command}), KeyStroke::parse("cmd+q"));
    EXPECT_EQ((KeyStroke{21, KeyStroke::command | KeyStroke::shift}), KeyStroke::parse("shift+cmd+4"));
    EXPECT_EQ((KeyStroke{123, KeyStroke::control}), KeyStroke::parse("ctrl+left"));
    EXPECT_EQ((KeyStroke{0, KeyStroke::option}), KeyStroke::parse("alt+a"));
    EXPECT_EQ((KeyStroke{53, 0}), KeyStroke::parse("escape"));
    EXPECT_EQ((KeyStroke{70, 0}), KeyStroke::parse("code-70"));
}

TEST(KeyStroke, IsNotReadFromAnythingElse) {
    for (const char* text : {"", "cmd", "cmd+", "+q", "Q", "cmd+cmd+q", "super+q", "cmd+Q", "cmd q", "code-",
                             "code-128", "code--1", "code-1x", "cmd+q+"}) {
        EXPECT_EQ(std::nullopt, KeyStroke::parse(text)) << text;
    }
}

TEST(KeyStroke, IsWrittenAsItIsRead) {
    constexpr std::uint64_t every = KeyStroke::command | KeyStroke::control | KeyStroke::option | KeyStroke::shift;
    EXPECT_EQ("cmd+ctrl+alt+shift+tab", (KeyStroke{48, every}.text()));
    for (std::int64_t code = 0; code < 128; ++code) {
        const KeyStroke key{code, KeyStroke::control};
        EXPECT_EQ(key, KeyStroke::parse(key.text())) << key.text();
    }
}

TEST(KeyStroke, KnowsItsLetter) {
    EXPECT_EQ('q', (KeyStroke{12, KeyStroke::command}.letter()));
    EXPECT_EQ('\0', (KeyStroke{18, 0}.letter()));
    EXPECT_EQ('\0', (KeyStroke{123, 0}.letter()));
}

}  // namespace
}  // namespace vantrel::virtualmac
