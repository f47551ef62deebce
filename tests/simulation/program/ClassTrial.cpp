#include "tests/simulation/program/ClassTrial.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <variant>

#include "rehearsal/playing/FirstDifference.h"
#include "rehearsal/reading/ScenarioReader.h"
#include "tests/simulation/program/Situations.h"

namespace vantrel::simulation {
namespace {

std::size_t lineOf(const std::string& transcript, std::size_t place) {
    return 1 + static_cast<std::size_t>(
                   std::count(transcript.begin(), transcript.begin() + static_cast<long>(place), '\n'));
}

/// What needs no knowledge of the rules.
void checkForm(const std::string& transcript, std::vector<BrokenRule>& broken) {
    if (transcript.find("  end          ") == std::string::npos) {
        broken.push_back({"A transcript tells how the run ended", 0, "there is no end"});
    }
    constexpr const char* kind = "  misuse       ";
    const auto misuse = transcript.find(kind);
    if (misuse == std::string::npos) return;
    const auto line = transcript.substr(misuse, transcript.find('\n', misuse) - misuse);
    broken.push_back({"The client does not misuse its platform", lineOf(transcript, misuse), line});
}

void compare(const std::string& rule, const std::string& transcript, const std::string& other,
             std::vector<BrokenRule>& broken) {
    if (transcript != other) broken.push_back({rule, 0, rehearsal::firstDifference(transcript, other)});
}

/// The Mac's platform posts blocks of its own, which the last entry counts with the client's where the main thread has
/// not run them yet.
std::string withoutPendingBlocks(std::string transcript) {
    constexpr std::string_view counted = "pending blocks ";
    const auto left = transcript.rfind("| left: ");
    const auto start = left == std::string::npos ? left : transcript.find(counted, left);
    if (start == std::string::npos) return transcript;
    const auto end = std::min(transcript.find_first_of(",\n", start), transcript.size());
    const bool isLast = transcript[end] != ',';
    transcript.erase(isLast ? start - 2 : start, isLast ? end - start + 2 : end - start + 2);
    return transcript;
}

void append(std::vector<BrokenRule>& all, std::vector<BrokenRule> more) {
    std::move(more.begin(), more.end(), std::back_inserter(all));
}

/// An application is opened by way of the main run loop on the Mac's platform, so that a seed finds another order.
bool mayDiffer(const rehearsal::Scenario& scenario, const std::string& transcript) {
    return scenario.mac.seed != 0 && transcript.find("is asked to open") != std::string::npos;
}

void playOtherwise(const rehearsal::Scenario& scenario, const std::string& text, const std::string& transcript,
                   const Players& players, TrialResult& result) {
    const auto other = withoutPendingBlocks(players.playOtherwise(scenario));
    const auto expected = withoutPendingBlocks(transcript);
    if (other != expected && mayDiffer(scenario, transcript)) {
        result.counts["comparison: another order"] = {1, 0, 1};
        append(result.broken, brokenRules(text, other));
        return;
    }
    result.counts["comparison: the same bytes"] = {1, 0, 1};
    compare("Both ways give the same transcript", expected, other, result.broken);
}

}  // namespace

TrialResult tryClass(const std::string& text, const Players& players, bool twice) {
    TrialResult result;
    const auto read = rehearsal::readScenario(text, {});
    if (const auto* problems = std::get_if<rehearsal::Problems>(&read)) {
        for (const auto& problem : *problems) {
            result.broken.push_back({"A class is a scenario", 0, std::to_string(problem.line) + ": " + problem.what});
        }
        return result;
    }
    const auto& scenario = std::get<rehearsal::Scenario>(read);
    const auto transcript = players.play(scenario);
    result.counts = situations(text, transcript);
    checkForm(transcript, result.broken);
    append(result.broken, brokenRules(text, transcript));
    if (twice) compare("The same class gives the same transcript", transcript, players.play(scenario), result.broken);
    if (players.playOtherwise) playOtherwise(scenario, text, transcript, players, result);
    if (players.inspect) append(result.broken, players.inspect());
    return result;
}

}  // namespace vantrel::simulation
