#include "rehearsal/reading/ScenarioReader.h"

#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

#include "platform/portable/UTF8Validity.h"
#include "rehearsal/reading/ActionReader.h"
#include "rehearsal/reading/MacReader.h"
#include "rehearsal/reading/NodeReader.h"
#include "rehearsal/reading/ServerReader.h"

namespace vantrel::rehearsal {
namespace {

/// A year; longer runs are a slip of the pen.
constexpr double longestRun = 31'536'000;

class ScenarioReader {
  public:
    explicit ScenarioReader(Problems& problems) : reader_(problems), mac_(reader_), server_(reader_) {}

    Scenario read(const YAML::Node& root) {
        Scenario scenario;
        reader_.mapping(root, "the file",
                        {reader_.requiredTextInto("title", scenario.title),
                         {"mac", [&](const YAML::Node& value) { scenario.mac = mac_.read(value); }},
                         {"server", [&](const YAML::Node& value) { scenario.server = server_.read(value); }},
                         {"timeline",
                          [&](const YAML::Node& value) {
                              reader_.list(value, "'timeline'",
                                           [&](const YAML::Node& one) { step(one, scenario.timeline); });
                          },
                          true},
                         {"until",
                          [&](const YAML::Node& value) {
                              scenario.until = reader_.number(value, "'until'", 0, longestRun);
                              if (!value.IsNull()) until_ = value;
                          },
                          true}});
        if (until_ && !scenario.timeline.empty() && scenario.until < scenario.timeline.back().at) {
            reader_.fail(*until_, "'until' comes before the last step");
        }
        scenario.server.configuration.publicAddress = scenario.server.address;
        return scenario;
    }

  private:
    void step(const YAML::Node& node, std::vector<Step>& timeline) {
        std::optional<double> at;
        std::vector<Action> actions;
        reader_.entries(node, "a step", [&](const YAML::Node& key, const YAML::Node& value) {
            const auto& word = key.Scalar();
            if (word == "at") {
                at = reader_.number(value, "'at'", 0, longestRun);
                if (!timeline.empty() && *at < timeline.back().at) reader_.fail(value, "time goes back");
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

    /// `node` is what the word stands in.
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
    MacReader mac_;
    ServerReader server_;
    ActionReader actions_{reader_, mac_, server_};
    std::optional<YAML::Node> until_;
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

std::variant<Scenario, Problems> readScenario(const std::string& text) {
    if (const auto problem = encodingProblem(text)) return Problems{*problem};
    Problems problems;
    try {
        const auto documents = YAML::LoadAll(text);
        if (documents.empty() || documents.front().IsNull()) return Problems{{1, "the file is empty"}};
        if (documents.size() > 1) {
            NodeReader(problems).fail(documents[1], "a second document begins here; a scenario is one");
        }
        auto scenario = ScenarioReader(problems).read(documents.front());
        if (problems.empty()) return scenario;
    } catch (const YAML::Exception& exception) {
        NodeReader(problems).fail(exception.mark, "this is not YAML: " + exception.msg);
    }
    std::stable_sort(problems.begin(), problems.end(),
                     [](const Problem& left, const Problem& right) { return left.line < right.line; });
    return problems;
}

}  // namespace vantrel::rehearsal
