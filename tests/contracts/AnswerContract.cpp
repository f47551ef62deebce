#include <array>
#include <charconv>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "tests/contracts/AnswerBook.h"
#include "tests/contracts/ContractTest.h"

namespace vantrel::contracts {
namespace {

/// A document as the books write it: no spaces, the keys sorted, texts as they are between quotes.
class BookText {
  public:
    static std::string of(const JSONValue& value) { return std::visit(BookText(), value.value); }

    std::string operator()(std::nullptr_t) const { return "null"; }
    std::string operator()(bool boolean) const { return boolean ? "true" : "false"; }
    std::string operator()(double number) const {
        // Whole numbers without an exponent up to here; then the shortest text that reads back as the same number.
        constexpr double longest = 1e15;
        const bool isWhole =
            number > -longest && number < longest && number == static_cast<double>(static_cast<long long>(number));
        if (isWhole) return std::to_string(static_cast<long long>(number));
        std::array<char, 32> text{};
        const auto end = std::to_chars(text.data(), text.data() + text.size(), number);
        return {text.data(), end.ptr};
    }
    std::string operator()(const std::string& text) const { return "\"" + text + "\""; }
    std::string operator()(const JSONArray& array) const {
        std::string text;
        for (const JSONValue& value : array) text += (text.empty() ? "" : ",") + of(value);
        return "[" + text + "]";
    }
    std::string operator()(const JSONObject& object) const {
        std::string text;
        for (const auto& [key, value] : object) text += (text.empty() ? "\"" : ",\"") + key + "\":" + of(value);
        return "{" + text + "}";
    }
};

/// The answers of tests/contracts/answers, which are the same on every computer.
class AnswerContract : public ContractTest {
  protected:
    using Answering = std::function<std::optional<std::string>(const std::string& question)>;

    static void compare(const std::string& name, const Answering& answering) {
        for (const BookAnswer& each : readAnswerBook(name)) {
            const std::string given = answering(each.question).value_or(refusedAnswer);
            EXPECT_EQ(asInBook(given), asInBook(each.answer))
                << "question: " << asInBook(each.question) << "\nsource: " << each.source;
        }
    }
};

TEST_F(AnswerContract, AddressesThatAreFormed) {
    compare("urls.tsv", [this](const std::string& text) -> std::optional<std::string> {
        const auto url = computer().urls.form(text);
        if (!url) return std::nullopt;
        return url->absoluteString;
    });
}

TEST_F(AnswerContract, TextsInAQuery) {
    compare("query-encoding.tsv",
            [this](const std::string& text) { return computer().urls.addingPercentEncodingForQuery(text); });
}

TEST_F(AnswerContract, DocumentsThatAreRead) {
    compare("json-reading.tsv", [this](const std::string& document) -> std::optional<std::string> {
        const auto value = computer().json.parse(document);
        if (!value) return std::nullopt;
        return BookText::of(*value);
    });
}

TEST_F(AnswerContract, TextsThatAreWritten) {
    compare("json-writing.tsv", [this](const std::string& text) { return computer().json.serialise({{"k", text}}); });
}

TEST_F(AnswerContract, MomentsThatAreWritten) {
    compare("dates.tsv", [this](const std::string& seconds) { return computer().dates.string(std::stod(seconds)); });
}

TEST_F(AnswerContract, TextsInUpperCase) {
    compare("upper-case.tsv", [this](const std::string& text) { return computer().unicode.uppercased(text); });
}

TEST_F(AnswerContract, BytesThatAreUTF8) {
    compare("utf-8.tsv", [this](const std::string& bytes) {
        return std::string(computer().unicode.isValidUTF8(bytes) ? "yes" : "no");
    });
}

TEST_F(AnswerContract, SettingsThatAreReadBack) {
    compare("defaults.tsv", [this](const std::string& value) {
        computer().userDefaults.set("contract_key", value);
        return computer().userDefaults.string("contract_key");
    });
}

}  // namespace
}  // namespace vantrel::contracts
