#include "tests/simulation/model/reading/Scenario.h"

#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace vantrel::simulation {
namespace {

constexpr std::int64_t usualCalendar = 1772438400;  // 2026-03-02T08:00:00Z

std::int64_t milliseconds(const YAML::Node& seconds) {
    return std::llround(seconds.as<double>() * 1000);
}

std::int64_t daysBefore(int year, int month, int day) {
    // Counted from 1 March, so that the leap day is a year's last.
    const int shifted = month > 2 ? year : year - 1;
    const std::int64_t era = shifted / 400;
    const std::int64_t ofEra = shifted - era * 400;
    const std::int64_t ofYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + ofEra * 365 + ofEra / 4 - ofEra / 100 + ofYear - 719468;
}

std::int64_t calendarOf(const std::string& text) {
    std::array<int, 6> part{};
    // Anything else is refused by the player.
    if (std::sscanf(text.c_str(), "%d-%d-%dT%d:%d:%dZ", &part[0], &part[1], &part[2], &part[3], &part[4], &part[5]) !=
        6) {
        return usualCalendar;
    }
    return daysBefore(part[0], part[1], part[2]) * 86400 + part[3] * 3600 + part[4] * 60 + part[5];
}

std::optional<std::string> textAt(const YAML::Node& map, const char* key) {
    const YAML::Node value = map[key];
    if (!value || !value.IsScalar()) return std::nullopt;
    return value.as<std::string>();
}

/// Every application that is named anywhere with its identifier.
void findIdentifiers(const YAML::Node& node, Scenario& scenario) {
    if (node.IsMap()) {
        const auto name = textAt(node, "name");
        const auto identifier = textAt(node, "bundle-identifier");
        if (name && identifier)
            scenario.identifiers.emplace(*name == "none" ? "" : *name, *identifier == "none" ? "" : *identifier);
    }
    if (!node.IsMap() && !node.IsSequence()) return;
    for (const auto& child : node) findIdentifiers(node.IsMap() ? child.second : child, scenario);
}

void readMac(const YAML::Node& mac, Scenario& scenario) {
    if (!mac.IsMap()) return;
    scenario.accessibility = textAt(mac, "accessibility");
    const auto activation = textAt(mac, "activation");
    scenario.lateFront = activation == "late";
    scenario.comesWhenAsked = activation == "brings" || textAt(mac, "macos") == "13";
    scenario.microphone = textAt(mac, "microphone");
    scenario.camera = textAt(mac, "camera");
    scenario.bundleIdentifier = textAt(mac, "bundle-identifier").value_or(scenario.bundleIdentifier);
    if (const auto calendar = textAt(mac, "calendar")) scenario.calendar = calendarOf(*calendar);
    if (const YAML::Node spaces = mac["separate-spaces"]) scenario.separateSpaces = spaces.as<bool>();
    for (const auto& setting : mac["settings"]) {
        scenario.settings[setting.first.as<std::string>()] = setting.second.as<std::string>();
    }
    const YAML::Node displays = mac["displays"];
    if (!displays) return;
    scenario.displays.clear();
    for (const auto& display : displays) {
        std::vector<std::string> row{display["name"].as<std::string>()};
        for (const auto& value : display["frame"]) row.push_back(value.as<std::string>());
        scenario.displays.push_back(std::move(row));
    }
}

void readServer(const YAML::Node& server, Scenario& scenario) {
    if (!server.IsMap()) return;
    scenario.address = textAt(server, "address").value_or(scenario.address);
    if (const YAML::Node latency = server["latency"]) {
        scenario.latency = milliseconds(latency);
        scenario.setsLatency = true;
    }
    if (server["replies"]) scenario.bendsReplies = true;
    constexpr std::array<std::string_view, 4> timeless{"to", "times", "status", "body"};
    for (const auto& rule : server["replies"]) {
        for (const auto& entry : rule) {
            const std::string key = entry.first.as<std::string>();
            const bool plain = std::find(timeless.begin(), timeless.end(), key) != timeless.end();
            scenario.bendsTimes = scenario.bendsTimes || !plain;
        }
    }
}

}  // namespace

Scenario Scenario::read(const std::string& text) {
    Scenario scenario;
    scenario.calendar = usualCalendar;
    scenario.displays = {{"Schermo integrato", "0", "0", "1440", "900"}};
    try {
        const YAML::Node root = YAML::Load(text);
        if (!root.IsMap()) return scenario;
        scenario.begins = static_cast<bool>(root["begins"]);
        if (const YAML::Node mac = root["mac"]) readMac(mac, scenario);
        if (const YAML::Node server = root["server"]) readServer(server, scenario);
        findIdentifiers(root, scenario);
        scenario.known = true;
    } catch (const YAML::Exception&) {
        scenario.known = false;
    }
    return scenario;
}

}  // namespace vantrel::simulation
