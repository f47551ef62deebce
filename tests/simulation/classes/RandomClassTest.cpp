#include <gtest/gtest.h>

#include <set>
#include <string>
#include <variant>

#include "rehearsal/reading/ScenarioReader.h"
#include "tests/simulation/classes/RandomClass.h"

namespace vantrel::simulation {
namespace {

rehearsal::Problems problemsOf(const std::string& text) {
    const auto read = rehearsal::readScenario(text, {});
    const auto* problems = std::get_if<rehearsal::Problems>(&read);
    return problems ? *problems : rehearsal::Problems();
}

TEST(RandomClass, AThousandNumbersGiveAThousandScenariosWithoutAProblem) {
    std::set<std::string> texts;
    for (std::uint64_t number = 1; number <= 1'000; ++number) {
        const auto text = randomClass(number).text();
        for (const auto& problem : problemsOf(text)) {
            ADD_FAILURE() << number << ":" << problem.line << ": " << problem.what << "\n" << text;
        }
        texts.insert(text);
    }
    EXPECT_EQ(texts.size(), 1'000U);
}

TEST(RandomClass, TheSameNumberGivesTheSameBytes) {
    for (std::uint64_t number = 1; number <= 50; ++number) {
        EXPECT_EQ(randomClass(number).text(), randomClass(number).text());
    }
}

// Whatever is left out, a scenario is left: this is how a failing one is made short.
TEST(RandomClass, WithoutOneOfItsPiecesItIsAScenarioStill) {
    for (std::uint64_t number = 1; number <= 20; ++number) {
        const auto whole = randomClass(number);
        for (auto list : {&WrittenClass::mac, &WrittenClass::browsers, &WrittenClass::applications,
                          &WrittenClass::server, &WrittenClass::sessions, &WrittenClass::replies}) {
            for (std::size_t place = 0; place < (whole.*list).size(); ++place) {
                auto less = whole;
                (less.*list).erase((less.*list).begin() + static_cast<long>(place));
                EXPECT_EQ(problemsOf(less.text()), rehearsal::Problems()) << less.text();
            }
        }
        auto less = whole;
        while (!less.timeline.empty()) {
            less.timeline.erase(less.timeline.begin());
            EXPECT_EQ(problemsOf(less.text()), rehearsal::Problems()) << less.text();
        }
    }
}

}  // namespace
}  // namespace vantrel::simulation
