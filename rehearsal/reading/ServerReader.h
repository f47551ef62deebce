#pragma once

#include <yaml-cpp/yaml.h>

#include "rehearsal/reading/NodeReader.h"
#include "rehearsal/scenario/ServerSetup.h"

namespace vantrel::rehearsal {

/// Reads what stands under `server`, and the reply rules that steps share with it.
class ServerReader {
  public:
    explicit ServerReader(NodeReader& reader) : reader_(reader) {}

    ServerSetup read(const YAML::Node& node);
    ReplyRule rule(const YAML::Node& node);

  private:
    std::string address(const YAML::Node& node);
    practice::PracticeSession session(const YAML::Node& node);
    practice::VersionConfiguration version(const YAML::Node& node);
    void target(const YAML::Node& node, practice::BendRule& bend);
    void pieces(const YAML::Node& node, ReplyRule& rule);

    NodeReader& reader_;
};

}  // namespace vantrel::rehearsal
