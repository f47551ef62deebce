#include "rehearsal/reading/ScenarioReader.h"

#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/portable/UTF8Validity.h"
#include "platform/virtual/scheduler/NumberText.h"
#include "rehearsal/reading/ActionReader.h"
#include "rehearsal/reading/MacReader.h"
#include "rehearsal/reading/NodeReader.h"
#include "rehearsal/reading/ServerReader.h"

namespace vantrel::rehearsal {
namespace {

/// A year. A longer run is probably a typing error.
constexpr double longestRun = 31'536'000;

/// preludes/ with letters, digits and hyphens, which is a valid file name on every system.
bool isPreludeName(const std::string& name) {
    constexpr std::string_view folder = "preludes/";
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789-";
    return name.starts_with(folder) && name.size() > folder.size() &&
           name.find_first_not_of(letters, folder.size()) == std::string::npos;
}

class ScenarioReader {
  public:
    ScenarioReader(Problems& problems, const PreludeSource& preludes)
        : reader_(problems), preludes_(preludes), mac_(reader_), server_(reader_) {}

    Scenario read(const YAML::Node& root) {
        Scenario scenario;
        if (root.IsMap()) beginFirst(root, scenario);
        reader_.mapping(root, "the file",
                        {reader_.requiredTextInto("title", scenario.title),
                         {"begins", [](const YAML::Node&) {}},
                         {"mac", [&](const YAML::Node& value) { mac(value, scenario); }},
                         {"server", [&](const YAML::Node& value) { server(value, scenario); }},
                         {"timeline",
                          [&](const YAML::Node& value) {
                              reader_.list(value, "'timeline'",
                                           [&](const YAML::Node& one) { step(one, scenario.timeline); });
                          },
                          true},
                         {"until", [&](const YAML::Node& value) { until(value, scenario); }, true}});
        if (until_ && !scenario.timeline.empty() && scenario.until < scenario.timeline.back().at) {
            reader_.fail(*until_, "'until' comes before the last step");
        }
        return scenario;
    }

  private:
    /// Before everything else, wherever it is in the file, because the reading of the rest depends on it.
    void beginFirst(const YAML::Node& root, Scenario& scenario) {
        reader_.entries(root, "the file", [&](const YAML::Node& key, const YAML::Node& value) {
            if (key.Scalar() == "begins") begin(value, scenario);
        });
    }

    /// Adds a prelude to the scenario even if none was found: the rest must not be read as the setup of a launch.
    void begin(const YAML::Node& node, Scenario& scenario) {
        auto& prelude = scenario.prelude.emplace();
        prelude.name = reader_.text(node, "'begins'");
        if (!node.IsScalar()) return;
        if (!isPreludeName(prelude.name)) {
            return reader_.fail(node, "'begins' is not preludes/ and a name in lower case, such as preludes/lockdown");
        }
        auto answer = preludes_(prelude.name);
        if (const auto* why = std::get_if<NoPrelude>(&answer)) {
            for (const auto& sentence : *why) reader_.fail(node, sentence);
            return;
        }
        auto& found = std::get<FoundPrelude>(answer);
        if (found.scenario.mac.seed != 0) reader_.fail(node, prelude.name + " has a seed of its own");
        scenario.mac = std::move(found.scenario.mac);
        scenario.server = std::move(found.scenario.server);
        prelude.timeline = std::move(found.scenario.timeline);
        prelude.until = found.scenario.until;
        prelude.keptTranscript = std::move(found.keptTranscript);
        earliest_ = prelude.until;
    }

    void mac(const YAML::Node& value, Scenario& scenario) {
        if (scenario.prelude) {
            scenario.prelude->mac = mac_.readAfterPrelude(value);
        } else {
            scenario.mac = mac_.read(value);
        }
    }

    void server(const YAML::Node& value, Scenario& scenario) {
        if (scenario.prelude) {
            scenario.prelude->server = server_.readAfterPrelude(value, scenario.server);
        } else {
            scenario.server = server_.read(value);
        }
    }

    void until(const YAML::Node& value, Scenario& scenario) {
        scenario.until = reader_.number(value, "'until'", 0, longestRun);
        if (value.IsNull()) return;
        until_ = value;
        if (scenario.until < earliest_) {
            reader_.fail(value, "'until' comes before the end of the prelude, " + virtualmac::shortest(earliest_));
        }
    }

    void step(const YAML::Node& node, std::vector<Step>& timeline) {
        std::optional<double> at;
        std::vector<Action> actions;
        reader_.entries(node, "a step", [&](const YAML::Node& key, const YAML::Node& value) {
            const auto& word = key.Scalar();
            if (word == "at") {
                at = reader_.number(value, "'at'", 0, longestRun);
                if (!timeline.empty() && *at < timeline.back().at) reader_.fail(value, "time goes back");
                if (*at < earliest_) {
                    reader_.fail(value,
                                 "a step comes before the end of the prelude, " + virtualmac::shortest(earliest_));
                }
            } else {
                if (!actions.empty()) reader_.fail(key, "a step has a second action, '" + word + "'");
                if (word == "together") {
                    reader_.list(value, "'together'", [&](const YAML::Node& one) { together(one, actions); });
                    if (value.IsSequence() && actions.size() < 2) {
                        reader_.fail(key, "'together' holds fewer than two actions");
                    }
                } else {
                    action(node, key, value, actions);
                }
            }
        });
        if (!node.IsMap()) return;
        if (!at) reader_.fail(node, "a step lacks 'at'");
        if (actions.empty() && misspelt_ != node.Mark().line) reader_.fail(node, "a step lacks what happens");
        if (!at || actions.empty()) return;
        Step step{*at, std::move(actions.front()), {}};
        step.together.assign(std::make_move_iterator(actions.begin() + 1), std::make_move_iterator(actions.end()));
        timeline.push_back(std::move(step));
    }

    /// `node` is the mapping with the word.
    void action(const YAML::Node& node, const YAML::Node& key, const YAML::Node& value, std::vector<Action>& actions) {
        const auto& word = key.Scalar();
        if (actions_.isWord(word)) {
            actions.push_back(actions_.read(word, value));
        } else {
            reader_.fail(key, "unknown word '" + word + "' in a step");
            misspelt_ = node.Mark().line;
        }
    }

    void together(const YAML::Node& node, std::vector<Action>& actions) {
        if (node.IsMap() && node.size() != 1) return reader_.fail(node, "each of 'together' is one action");
        reader_.entries(node, "each of 'together'",
                        [&](const YAML::Node& key, const YAML::Node& value) { action(node, key, value, actions); });
    }

    NodeReader reader_;
    const PreludeSource& preludes_;
    MacReader mac_;
    ServerReader server_;
    ActionReader actions_{reader_, mac_, server_};
    std::optional<YAML::Node> until_;
    /// The end of the prelude.
    double earliest_ = 0;
    int misspelt_ = -1;
};

std::optional<Problem> encodingProblem(const std::string& text) {
    int line = 1;
    for (std::size_t start = 0; start < text.size(); ++line) {
        const auto end = std::min(text.find('\n', start), text.size());
        const auto piece = std::string_view(text).substr(start, end - start);
        if (!isValidUTF8(piece)) return Problem{line, "this is not UTF-8"};
        if (piece.find('\0') != std::string_view::npos) return Problem{line, "there is a NUL character"};
        start = end + 1;
    }
    return std::nullopt;
}

}  // namespace

std::variant<Scenario, Problems> readScenario(const std::string& text, const PreludeSource& preludes) {
    if (const auto problem = encodingProblem(text)) return Problems{*problem};
    Problems problems;
    try {
        const auto documents = YAML::LoadAll(text);
        if (documents.empty() || documents.front().IsNull()) return Problems{{1, "the file is empty"}};
        if (documents.size() > 1) {
            NodeReader(problems).fail(documents[1], "a second document begins here; a scenario is one");
        }
        auto scenario = ScenarioReader(problems, preludes).read(documents.front());
        if (problems.empty()) return scenario;
    } catch (const YAML::Exception& exception) {
        NodeReader(problems).fail(exception.mark, "this is not YAML: " + exception.msg);
    }
    std::stable_sort(problems.begin(), problems.end(),
                     [](const Problem& left, const Problem& right) { return left.line < right.line; });
    return problems;
}

}  // namespace vantrel::rehearsal
