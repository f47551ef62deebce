#pragma once

#include <yaml-cpp/yaml.h>

#include <set>
#include <string>
#include <vector>

#include "rehearsal/reading/NodeReader.h"
#include "rehearsal/scenario/InstalledBrowser.h"

namespace vantrel::rehearsal {

/// Reads what is said of browsers, and how any application behaves.
class BrowserReader {
  public:
    explicit BrowserReader(NodeReader& reader) : reader_(reader) {}

    /// The list of what is installed.
    InstalledBrowsers browsers(const YAML::Node& node);
    std::vector<NodeReader::Member> behaviourInto(Behaviour& behaviour);

  private:
    BrowserName name(const YAML::Node& node);
    void described(const YAML::Node& node, InstalledBrowsers& browsers);
    std::vector<NodeReader::Member> membersInto(InstalledBrowser& browser);

    NodeReader& reader_;
    /// The names in the list so far.
    std::set<std::string> named_;
};

}  // namespace vantrel::rehearsal
