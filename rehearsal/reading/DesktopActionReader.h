#pragma once

#include <yaml-cpp/yaml.h>

#include <functional>
#include <map>
#include <string>

#include "rehearsal/reading/MacReader.h"
#include "rehearsal/reading/NodeReader.h"
#include "rehearsal/scenario/DesktopAction.h"

namespace vantrel::rehearsal {

/// Reads the actions of a step on the desktop.
class DesktopActionReader {
  public:
    DesktopActionReader(NodeReader& reader, MacReader& mac);

    bool isWord(const std::string& word) const { return readers_.contains(word); }
    /// isWord(word) must hold.
    DesktopAction read(const std::string& word, const YAML::Node& value) { return readers_.at(word)(value); }

  private:
    DesktopAction heldKey(const YAML::Node& node);
    DesktopAction application(const YAML::Node& node);
    MoveWindow move(const YAML::Node& node);
    ResizeWindow resize(const YAML::Node& node);
    OpenWindow window(const YAML::Node& node);
    SetDisplayNotices notices(const YAML::Node& node);
    FailElements fault(const YAML::Node& node);
    /// The two numbers of `[a, b]`.
    Point pair(const YAML::Node& node, const std::string& what, double least);

    NodeReader& reader_;
    MacReader& mac_;
    std::map<std::string, std::function<DesktopAction(const YAML::Node&)>, std::less<>> readers_;
};

}  // namespace vantrel::rehearsal
