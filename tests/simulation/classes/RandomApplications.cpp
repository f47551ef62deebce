#include "tests/simulation/classes/RandomApplications.h"

#include <array>
#include <set>
#include <utility>

namespace vantrel::simulation {
namespace {

/// From the opening to the lockdown.
constexpr Milliseconds safariTakes = 4'100;

enum class Whose { all, chromiums, safaris };

struct Manner {
    const char* word;
    /// Where the word takes seconds, at most so many milliseconds.
    Milliseconds longest;
    Whose whose;
};

/// What is to come often stands more than once.
constexpr std::array<Manner, 16> manyManners = {{{"ignores-quit: yes", 0, Whose::all},
                                                 {"ignores-quit: yes", 0, Whose::all},
                                                 {"refuses-force-quit: yes", 0, Whose::all},
                                                 {"ignores-force-quit: yes", 0, Whose::all},
                                                 {"declines-activation: yes", 0, Whose::all},
                                                 {"quits-in", 8'000, Whose::all},
                                                 {"killed-in", 8'000, Whose::all},
                                                 {"starts-in", 3'500, Whose::all},
                                                 {"opens-window-in", 9'000, Whose::all},
                                                 {"opens-window-in", 3'000, Whose::all},
                                                 {"ends-in", 60'000, Whose::all},
                                                 {"in-home: yes", 0, Whose::chromiums},
                                                 {"forks: yes", 0, Whose::chromiums},
                                                 {"answers-in", 14'000, Whose::safaris},
                                                 {"answers-in", 2'000, Whose::safaris},
                                                 {"answers-with: nothing", 0, Whose::safaris}}};

}  // namespace

void RandomApplications::draw(WrittenClass& written, Plan& plan) {
    drawBrowser(written, plan);
    drawOthers(written, plan);
}

void RandomApplications::drawBrowser(WrittenClass& written, Plan& plan) {
    constexpr std::array<int, 7> weights = {38, 22, 10, 6, 8, 8, 8};
    switch (numbers_.weighted(weights)) {
        case 0:
            return;
        case 1:
            written.browsers.push_back("{name: chrome" + manners(false) + "}");
            if (numbers_.chance(20)) written.browsers.emplace_back("edge");
            return;
        case 2:
            written.browsers.emplace_back("edge");
            plan.browser = "Microsoft Edge";
            return;
        case 3:
            written.browsers.push_back("{name: edge" + manners(false) + "}");
            plan.browser = "Microsoft Edge";
            return;
        case 4:
            written.browsers.emplace_back("firefox");
            break;
        case 5:
            written.browsers.push_back("{name: safari" + manners(true) + "}");
            break;
        default:
            written.mac.emplace_back("browsers: []");
    }
    plan.browser = "Safari";
    plan.launchTakes += safariTakes - 3'000;
    if (written.browsers.empty() && numbers_.chance(15)) written.mac.emplace_back("safari: no");
}

std::string RandomApplications::manners(bool isSafari) {
    std::string text;
    std::set<std::string> drawn;
    for (auto count = numbers_.from(1, 3); count > 0; --count) {
        const auto& manner = numbers_.pick(manyManners);
        const bool fits = manner.whose == Whose::all || (manner.whose == Whose::safaris) == isSafari;
        if (!fits || !drawn.insert(manner.word).second) continue;
        text += std::string(", ") + manner.word;
        if (manner.longest > 0) text += ": " + secondsText(numbers_.moment(0, manner.longest));
    }
    if (numbers_.chance(4)) text += ", cannot-start: L’applicazione è danneggiata.";
    return text;
}

void RandomApplications::drawOthers(WrittenClass& written, Plan& plan) {
    if (numbers_.chance(14)) {
        const std::string identifier = plan.browser == "Safari"           ? "com.apple.Safari"
                                       : plan.browser == "Microsoft Edge" ? "com.microsoft.edgemac"
                                                                          : "com.google.Chrome";
        const std::string window = numbers_.chance(70) ? ", window: [100, 80, 900, 600]" : "";
        written.applications.push_back("{name: " + plan.browser + ", bundle-identifier: " + identifier + window + "}");
    }
    for (auto count = numbers_.chance(50) ? numbers_.from(1, 3) : 0; count > 0; --count) {
        std::string name;
        auto other = application(numbers_, &name);
        written.applications.push_back(std::move(other));
        plan.applications.push_back(std::move(name));
    }
    if (numbers_.chance(2)) {
        written.applications.emplace_back("{name: Vantrel, bundle-identifier: biz.quorrin.vantrel}");
    }
}

std::string RandomApplications::application(RandomNumbers& numbers, std::string* name) {
    constexpr std::array<std::pair<const char*, const char*>, 10> known = {
        {{"Note", "com.example.notes"},
         {"Anteprima", "com.apple.Preview"},
         {"Terminal", "com.apple.Terminal"},
         {"Posta", "com.example.mail"},
         {"Spotlight", "com.apple.Spotlight"},
         {"Dock", "com.apple.dock"},
         {"Sophos Home", "com.example.sophos"},
         {"Google Chrome Helper", "com.google.Chrome.helper"},
         {"Senza", "none"},
         {"Vantrel", "com.example.other"}}};
    constexpr std::array windows = {"", ", window: [100, 100, 600, 400]", ", window: [0, 0, 1440, 900]",
                                    ", window: [1800, 50, 500, 400]"};
    const auto& [called, identifier] = numbers.pick(known);
    if (name != nullptr) *name = called;
    std::string text = std::string("{name: ") + called + ", bundle-identifier: " + identifier;
    text += numbers.pick(windows);
    if (numbers.chance(10)) text += ", ignores-quit: yes";
    if (numbers.chance(10)) text += ", quits-in: " + secondsText(numbers.moment(0, 4'000));
    return text + "}";
}

}  // namespace vantrel::simulation
