#pragma once

#include <yaml-cpp/yaml.h>

#include <set>
#include <string>
#include <vector>

#include "rehearsal/reading/NodeReader.h"
#include "rehearsal/scenario/ServerSetup.h"

namespace vantrel::rehearsal {

/// Reads the values under `server`, and the reply rules that steps share with it.
class ServerReader {
  public:
    explicit ServerReader(NodeReader& reader) : reader_(reader) {}

    /// The server at the launch.
    ServerSetup read(const YAML::Node& node);
    /// The changes after a prelude that began with `before`.
    ServerConditions readAfterPrelude(const YAML::Node& node, const ServerSetup& before);
    ExchangeRule rule(const YAML::Node& node);

  private:
    /// `codes` are those of the existing sessions; reading adds more.
    std::vector<NodeReader::Member> conditionsInto(ServerConditions& server, std::set<std::string>& codes);
    std::string address(const YAML::Node& node);
    practice::PracticeSession session(const YAML::Node& node);
    practice::VersionConfiguration version(const YAML::Node& node);
    void target(const YAML::Node& node, practice::ReplyRule& reply);
    void pieces(const YAML::Node& node, ExchangeRule& rule);

    NodeReader& reader_;
};

}  // namespace vantrel::rehearsal
