#pragma once

#include <yaml-cpp/yaml.h>

#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "rehearsal/reading/Problem.h"

namespace vantrel::rehearsal {

/// Reads YAML nodes and collects all their mistakes; it continues after a problem. After one, the returned values only
/// serve to find more problems.
class NodeReader {
  public:
    using Read = std::function<void(const YAML::Node&)>;

    struct Member {
        std::string name;
        Read read;
        bool required = false;
    };

    template <typename Value>
    using Words = std::vector<std::pair<std::string_view, Value>>;

    explicit NodeReader(std::vector<Problem>& problems) : problems_(problems) {}

    void fail(const YAML::Mark& mark, std::string what);
    void fail(const YAML::Node& node, std::string what);

    /// `what` names the mapping in messages. Members are read in the order of the file.
    void mapping(const YAML::Node& node, const std::string& what, const std::vector<Member>& members);
    /// Every entry of a mapping with free keys, in the order of the file.
    void entries(const YAML::Node& node, const std::string& what,
                 const std::function<void(const YAML::Node& key, const YAML::Node& value)>& read);
    void list(const YAML::Node& node, const std::string& what, const Read& read);

    std::string text(const YAML::Node& node, const std::string& what);
    std::string nonEmptyText(const YAML::Node& node, const std::string& what);
    double number(const YAML::Node& node, const std::string& what, double least,
                  double most = std::numeric_limits<double>::max());
    long long whole(const YAML::Node& node, const std::string& what, long long least, long long most);
    bool flag(const YAML::Node& node, const std::string& what);

    template <typename Value>
    Value word(const YAML::Node& node, const std::string& what, const Words<Value>& words) {
        std::string known;
        for (const auto& [name, value] : words) {
            if (node.IsScalar() && node.Scalar() == name) return value;
            known += (known.empty() ? "" : ", ") + std::string(name);
        }
        fail(node, what + " is not one of: " + known);
        return words.front().second;
    }

    // Members that are stored directly in `place`, which must outlive the reading.
    Member textInto(std::string name, std::string& place);
    Member requiredTextInto(std::string name, std::string& place);
    Member numberInto(std::string name, double& place, double least);
    Member flagInto(std::string name, bool& place);
    /// At most an hour.
    Member secondsInto(std::string name, std::optional<double>& place);
    /// A word that is not allowed after a prelude. `instead` completes the message.
    Member settledByPrelude(std::string name, std::string instead = {});

  private:
    std::vector<Problem>& problems_;
    /// The entry being read.
    std::optional<YAML::Mark> keyMark_;
};

}  // namespace vantrel::rehearsal
