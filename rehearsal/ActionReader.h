#pragma once

#include <yaml-cpp/yaml.h>

#include <optional>
#include <string>

#include "rehearsal/Action.h"
#include "rehearsal/MacReader.h"
#include "rehearsal/NodeReader.h"
#include "rehearsal/ServerReader.h"

namespace vantrel::rehearsal {

/// Reads what happens in a step.
class ActionReader {
  public:
    ActionReader(NodeReader& reader, MacReader& mac, ServerReader& server)
        : reader_(reader), mac_(mac), server_(server) {}

    bool isWord(const std::string& word) const;

    /// `word` is one for which isWord holds.
    Action read(const std::string& word, const YAML::Node& value);

  private:
    TypeTexts texts(const YAML::Node& node);
    PressKey key(const YAML::Node& node);
    Action deed(const YAML::Node& node);

    NodeReader& reader_;
    MacReader& mac_;
    ServerReader& server_;
};

}  // namespace vantrel::rehearsal
