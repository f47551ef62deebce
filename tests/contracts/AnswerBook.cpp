#include "tests/contracts/AnswerBook.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <string_view>

namespace vantrel::contracts {

namespace {

constexpr std::size_t hexDigits = 2;
constexpr int hexadecimal = 16;

std::string unescaped(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            bytes += text[at];
            continue;
        }
        const char kind = text.at(++at);
        if (kind == 'x') {
            bytes += static_cast<char>(std::stoi(std::string(text.substr(at + 1, hexDigits)), nullptr, hexadecimal));
            at += hexDigits;
        } else {
            bytes += kind == 't' ? '\t' : kind == 'n' ? '\n' : kind;
        }
    }
    return bytes;
}

}  // namespace

std::vector<BookAnswer> readAnswerBook(const std::string& name) {
    std::ifstream stream(std::string(VANTREL_ANSWERS) + "/" + name);
    std::vector<BookAnswer> answers;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("# ")) continue;
        const std::size_t first = line.find('\t');
        const std::size_t second = first == std::string::npos ? first : line.find('\t', first + 1);
        if (second == std::string::npos || second + 1 == line.size()) {
            ADD_FAILURE() << name << ": a line without three columns: " << line;
            continue;
        }
        answers.push_back({unescaped(line.substr(0, first)), unescaped(line.substr(first + 1, second - first - 1)),
                           line.substr(second + 1)});
    }
    EXPECT_FALSE(answers.empty()) << name << " is missing or empty";
    return answers;
}

std::string asInBook(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        if (byte == '\\') {
            text += "\\\\";
        } else if (byte == '\t') {
            text += "\\t";
        } else if (byte == '\n') {
            text += "\\n";
        } else if (value < 0x20 || value == 0x7f) {
            std::array<char, 5> escaped{};
            std::snprintf(escaped.data(), escaped.size(), "\\x%02x", value);
            text += escaped.data();
        } else {
            text += byte;
        }
    }
    return text;
}

}  // namespace vantrel::contracts
