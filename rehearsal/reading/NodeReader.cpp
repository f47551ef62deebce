#include "rehearsal/reading/NodeReader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

#include "platform/virtual/scheduler/NumberText.h"

namespace vantrel::rehearsal {
namespace {

std::string quoted(const std::string& text) {
    return "'" + text + "'";
}

template <typename Number>
std::optional<Number> parsed(const YAML::Node& node) {
    if (!node.IsScalar()) return std::nullopt;
    const auto& text = node.Scalar();
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

}  // namespace

void NodeReader::fail(const YAML::Mark& mark, std::string what) {
    Problem problem{mark.is_null() ? 1 : mark.line + 1, std::move(what)};
    if (std::find(problems_.begin(), problems_.end(), problem) == problems_.end()) {
        problems_.push_back(std::move(problem));
    }
}

void NodeReader::fail(const YAML::Node& node, std::string what) {
    // If a key has no value, the parser's mark is that of the next node.
    fail(node.IsNull() && keyMark_ ? *keyMark_ : node.Mark(), std::move(what));
}

void NodeReader::mapping(const YAML::Node& node, const std::string& what, const std::vector<Member>& members) {
    std::set<std::string> seen;
    entries(node, what, [&](const YAML::Node& key, const YAML::Node& value) {
        const auto member = std::find_if(members.begin(), members.end(),
                                         [&](const Member& candidate) { return candidate.name == key.Scalar(); });
        if (member == members.end()) return fail(key, "unknown word " + quoted(key.Scalar()) + " in " + what);
        seen.insert(member->name);
        member->read(value);
    });
    if (!node.IsMap()) return;
    for (const auto& member : members) {
        if (member.required && !seen.contains(member.name)) fail(node, what + " lacks " + quoted(member.name));
    }
}

void NodeReader::entries(const YAML::Node& node, const std::string& what,
                         const std::function<void(const YAML::Node&, const YAML::Node&)>& read) {
    if (!node.IsMap()) return fail(node, what + " is not a mapping");
    std::set<std::string> seen;
    for (const auto& entry : node) {
        if (!entry.first.IsScalar()) {
            fail(entry.first, "a key in " + what + " is not a plain word");
        } else if (!seen.insert(entry.first.Scalar()).second) {
            fail(entry.first, quoted(entry.first.Scalar()) + " stands twice in " + what);
        } else {
            const auto outer = std::exchange(keyMark_, entry.first.Mark());
            read(entry.first, entry.second);
            keyMark_ = outer;
        }
    }
}

void NodeReader::list(const YAML::Node& node, const std::string& what, const Read& read) {
    if (!node.IsSequence()) return fail(node, what + " is not a list");
    const auto outer = std::exchange(keyMark_, std::nullopt);
    for (const auto& element : node) read(element);
    keyMark_ = outer;
}

std::string NodeReader::text(const YAML::Node& node, const std::string& what) {
    if (node.IsScalar()) return node.Scalar();
    fail(node, what + " is not a text");
    return {};
}

std::string NodeReader::nonEmptyText(const YAML::Node& node, const std::string& what) {
    if (node.IsScalar() && node.Scalar().empty()) fail(node, what + " is empty");
    return text(node, what);
}

double NodeReader::number(const YAML::Node& node, const std::string& what, double least, double most) {
    const auto value = parsed<double>(node);
    if (!value || !std::isfinite(*value)) {
        fail(node, what + " is not a number");
        return least;
    }
    if (*value < least) fail(node, what + " is less than " + virtualmac::shortest(least));
    if (*value > most) fail(node, what + " is more than " + virtualmac::shortest(most));
    return *value;
}

long long NodeReader::whole(const YAML::Node& node, const std::string& what, long long least, long long most) {
    const auto value = parsed<long long>(node);
    if (!value || *value < least || *value > most) {
        fail(node, what + " is not a whole number from " + std::to_string(least) + " to " + std::to_string(most));
        return least;
    }
    return *value;
}

bool NodeReader::flag(const YAML::Node& node, const std::string& what) {
    return word<bool>(node, what, {{"yes", true}, {"no", false}, {"true", true}, {"false", false}});
}

NodeReader::Member NodeReader::textInto(std::string name, std::string& place) {
    const auto what = quoted(name);
    return {std::move(name), [this, what, &place](const YAML::Node& node) { place = text(node, what); }};
}

NodeReader::Member NodeReader::requiredTextInto(std::string name, std::string& place) {
    const auto what = quoted(name);
    return {std::move(name), [this, what, &place](const YAML::Node& node) { place = nonEmptyText(node, what); }, true};
}

NodeReader::Member NodeReader::numberInto(std::string name, double& place, double least) {
    const auto what = quoted(name);
    return {std::move(name),
            [this, what, &place, least](const YAML::Node& node) { place = number(node, what, least); }};
}

NodeReader::Member NodeReader::secondsInto(std::string name, std::optional<double>& place) {
    const auto what = quoted(name);
    return {std::move(name), [this, what, &place](const YAML::Node& node) { place = number(node, what, 0, 3600); }};
}

NodeReader::Member NodeReader::flagInto(std::string name, bool& place) {
    const auto what = quoted(name);
    return {std::move(name), [this, what, &place](const YAML::Node& node) { place = flag(node, what); }};
}

NodeReader::Member NodeReader::settledByPrelude(std::string name, std::string instead) {
    const auto problem = quoted(name) + " is settled at the launch, by the prelude" + std::move(instead);
    return {std::move(name), [this, problem](const YAML::Node& node) { fail(node, problem); }};
}

}  // namespace vantrel::rehearsal
