#pragma once

#include <yaml-cpp/yaml.h>

#include "rehearsal/reading/BrowserReader.h"
#include "rehearsal/reading/NodeReader.h"
#include "rehearsal/scenario/MacSetup.h"

namespace vantrel::rehearsal {

/// Reads the values under `mac`, and those that steps share with it.
class MacReader {
  public:
    explicit MacReader(NodeReader& reader) : reader_(reader), browsers_(reader) {}

    /// The Mac at the launch.
    MacSetup read(const YAML::Node& node);
    /// The changes after a prelude.
    MacConditions readAfterPrelude(const YAML::Node& node);

    Screen display(const YAML::Node& node);
    OtherApplication application(const YAML::Node& node);
    bool accessibility(const YAML::Node& node);
    AuthorizationStatus capture(const YAML::Node& node, const std::string& what);
    virtualmac::ActivationAnswer activation(const YAML::Node& node);
    virtualmac::AlertsLetIn alertsLetIn(const YAML::Node& node);

    /// `[x, y, width, height]`.
    Rect frame(const YAML::Node& node);

  private:
    double calendar(const YAML::Node& node);
    void displays(const YAML::Node& node, std::vector<Screen>& displays);
    std::vector<NodeReader::Member> conditionsInto(MacConditions& mac);
    void checkSafari(const YAML::Node& node, const MacConditions& mac);
    /// Empty for the word "none".
    std::optional<std::string> textOrNone(const YAML::Node& node, const std::string& what);
    void settings(const YAML::Node& node, std::map<std::string, std::string>& settings);

    NodeReader& reader_;
    BrowserReader browsers_;
};

}  // namespace vantrel::rehearsal
