#pragma once

#include <yaml-cpp/yaml.h>

#include "rehearsal/reading/NodeReader.h"
#include "rehearsal/scenario/MacSetup.h"

namespace vantrel::rehearsal {

/// Reads the values under `mac`, and those that steps share with it.
class MacReader {
  public:
    explicit MacReader(NodeReader& reader) : reader_(reader) {}

    /// The Mac at the launch.
    MacSetup read(const YAML::Node& node);
    /// The changes after a prelude.
    MacConditions readAfterPrelude(const YAML::Node& node);

    Screen display(const YAML::Node& node);
    OtherApplication application(const YAML::Node& node);
    bool accessibility(const YAML::Node& node);
    AuthorizationStatus capture(const YAML::Node& node, const std::string& what);

    /// `[x, y, width, height]`.
    Rect frame(const YAML::Node& node);

  private:
    double calendar(const YAML::Node& node);
    void displays(const YAML::Node& node, std::vector<Screen>& displays);
    InstalledBrowser browser(const YAML::Node& node);
    void browsers(const YAML::Node& node, MacConditions& mac);
    std::vector<NodeReader::Member> conditionsInto(MacConditions& mac);
    std::vector<NodeReader::Member> behaviourInto(Behaviour& behaviour);
    NodeReader::Member secondsInto(const char* word, std::optional<double>& place);
    void settings(const YAML::Node& node, std::map<std::string, std::string>& settings);

    NodeReader& reader_;
};

}  // namespace vantrel::rehearsal
