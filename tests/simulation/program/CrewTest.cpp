#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <map>
#include <set>

#include "tests/simulation/program/Crew.h"

namespace vantrel::simulation {
namespace {

constexpr double limit = 60;
constexpr const char* toItsEnd = "A class is played to its end";

TrialResult harmless(std::uint64_t number) {
    return {{}, {{"number: " + std::to_string(number), {1, 0, 1}}}};
}

std::map<std::uint64_t, TrialResult> resultsOf(const Crew& crew, std::uint64_t first, std::uint64_t last, int jobs) {
    std::map<std::uint64_t, TrialResult> results;
    crew.run(first, last, jobs, [&](std::uint64_t number, const TrialResult& result) {
        EXPECT_TRUE(results.emplace(number, result).second) << number << " came twice";
    });
    return results;
}

TEST(Crew, PlaysEveryNumberOnce) {
    const auto results = resultsOf(Crew(harmless, {}, limit), 10, 333, 3);
    EXPECT_EQ(results.size(), 324U);
    for (const auto& [number, result] : results) {
        EXPECT_TRUE(result.counts.contains("number: " + std::to_string(number))) << number;
    }
}

TEST(Crew, BringsWhatIsBroken) {
    const Crew crew([](std::uint64_t) { return TrialResult{{{"Una\tregola", 7, "due\nrighe"}}, {}}; }, {}, limit);
    const auto result = crew.run(1);
    ASSERT_EQ(result.broken.size(), 1U);
    EXPECT_EQ(result.broken[0].rule, "Una\tregola");
    EXPECT_EQ(result.broken[0].line, 7U);
    EXPECT_EQ(result.broken[0].why, "due\nrighe");
}

TEST(Crew, NamesTheNumberThatCrashesAndPlaysTheOthers) {
    const Crew crew(
        [](std::uint64_t number) {
            if (number == 5) std::raise(SIGKILL);
            if (number == 8) _exit(3);
            return harmless(number);
        },
        {}, limit);
    const auto results = resultsOf(crew, 1, 20, 2);
    EXPECT_EQ(results.size(), 20U);
    for (const auto& [number, result] : results) {
        if (number != 5 && number != 8) {
            EXPECT_TRUE(result.broken.empty()) << number;
            continue;
        }
        ASSERT_EQ(result.broken.size(), 1U);
        EXPECT_EQ(result.broken[0].rule, toItsEnd);
        EXPECT_EQ(result.broken[0].why,
                  number == 5 ? "the process was ended by signal 9" : "the process ended with status 3");
    }
}

TEST(Crew, NamesTheNumberThatHangs) {
    const Crew crew(
        [](std::uint64_t number) {
            while (number == 2) pause();
            return harmless(number);
        },
        {}, 3);
    const auto results = resultsOf(crew, 1, 3, 1);
    EXPECT_EQ(results.size(), 3U);
    ASSERT_EQ(results.at(2).broken.size(), 1U);
    EXPECT_EQ(results.at(2).broken[0].why, "it still runs after 3 s of real time");
    EXPECT_TRUE(results.at(3).broken.empty());
}

TEST(Crew, GoesOnInAnotherProcessAfterOneThatIsSpent) {
    static int played = 0;
    const Crew crew(
        [](std::uint64_t) {
            return TrialResult{{}, {{"of this process: " + std::to_string(++played), {1, 0, 1}}}};
        },
        [] { return played == 3; }, limit);
    std::multiset<std::string> places;
    for (const auto& [number, result] : resultsOf(crew, 1, 6, 1)) places.insert(result.counts.begin()->first);
    EXPECT_EQ(places.count("of this process: 1"), 2U);
    EXPECT_EQ(places.count("of this process: 3"), 2U);
}

}  // namespace
}  // namespace vantrel::simulation
