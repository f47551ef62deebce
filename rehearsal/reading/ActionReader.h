#pragma once

#include <yaml-cpp/yaml.h>

#include <optional>
#include <string>

#include "rehearsal/reading/DesktopActionReader.h"
#include "rehearsal/reading/MacReader.h"
#include "rehearsal/reading/NodeReader.h"
#include "rehearsal/reading/ServerReader.h"
#include "rehearsal/scenario/Action.h"

namespace vantrel::rehearsal {

/// Reads the actions of a step.
class ActionReader {
  public:
    ActionReader(NodeReader& reader, MacReader& mac, ServerReader& server)
        : reader_(reader), mac_(mac), server_(server), desktop_(reader, mac) {}

    bool isWord(const std::string& word) const;

    /// isWord(word) must hold.
    Action read(const std::string& word, const YAML::Node& value);

  private:
    TypeTexts texts(const YAML::Node& node);
    Action key(const YAML::Node& node);
    Action deed(const YAML::Node& node);

    NodeReader& reader_;
    MacReader& mac_;
    ServerReader& server_;
    DesktopActionReader desktop_;
};

}  // namespace vantrel::rehearsal
