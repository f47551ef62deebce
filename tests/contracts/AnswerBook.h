#pragma once

#include <string>
#include <vector>

namespace vantrel::contracts {

/// A question of an answer book, and the answer with its public source.
struct BookAnswer {
    std::string question;
    std::string answer;
    std::string source;
};

/// Reads a book of tests/contracts/answers. Fails the test if it cannot, or if the book is empty.
std::vector<BookAnswer> readAnswerBook(const std::string& name);

/// Bytes as a book writes them: a backslash, a tab, a line break and any other control character escaped.
std::string asInBook(const std::string& bytes);

/// The answer of what gives none.
inline constexpr auto refusedAnswer = "refused";

}  // namespace vantrel::contracts
