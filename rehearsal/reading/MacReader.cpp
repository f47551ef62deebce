#include "rehearsal/reading/MacReader.h"

#include <set>

#include "rehearsal/reading/CalendarTime.h"

namespace vantrel::rehearsal {

MacSetup MacReader::read(const YAML::Node& node) {
    MacSetup mac;
    auto members = conditionsInto(mac);
    members.insert(members.end(),
                   {{"bundle-identifier",
                     [&](const YAML::Node& value) {
                         const auto identifier = reader_.nonEmptyText(value, "'bundle-identifier'");
                         mac.bundleIdentifier = identifier == "none" ? std::nullopt : std::optional(identifier);
                     }},
                    {"seed",
                     [&](const YAML::Node& value) {
                         mac.seed =
                             static_cast<std::uint64_t>(reader_.whole(value, "'seed'", 0, 9'007'199'254'740'991));
                     }},
                    {"calendar", [&](const YAML::Node& value) { mac.calendar = calendar(value); }},
                    reader_.textInto("home", mac.home),
                    {"displays", [&](const YAML::Node& value) { displays(value, mac.displays); }},
                    reader_.flagInto("separate-spaces", mac.separateSpaces),
                    {"settings", [&](const YAML::Node& value) { settings(value, mac.settings); }}});
    reader_.mapping(node, "'mac'", members);
    return mac;
}

MacConditions MacReader::readAfterPrelude(const YAML::Node& node) {
    MacConditions mac;
    auto members = conditionsInto(mac);
    for (const char* word : {"bundle-identifier", "seed", "calendar", "home", "separate-spaces", "settings"}) {
        members.push_back(reader_.settledByPrelude(word));
    }
    members.push_back(reader_.settledByPrelude("displays", "; a step can plug, unplug, arrange or mirror one"));
    reader_.mapping(node, "'mac'", members);
    return mac;
}

std::vector<NodeReader::Member> MacReader::conditionsInto(MacConditions& mac) {
    return {{"accessibility", [&](const YAML::Node& value) { mac.accessibility = accessibility(value); }},
            {"microphone", [&](const YAML::Node& value) { mac.microphone = capture(value, "'microphone'"); }},
            {"camera", [&](const YAML::Node& value) { mac.camera = capture(value, "'camera'"); }},
            {"browsers", [&](const YAML::Node& value) { browsers(value, mac); }},
            secondsInto("window-flags-lag", mac.flagDelay),
            secondsInto("full-screen-takes", mac.fullScreenDuration),
            {"applications", [&](const YAML::Node& value) {
                 reader_.list(value, "'applications'",
                              [&](const YAML::Node& one) { mac.applications.push_back(application(one)); });
             }}};
}

Screen MacReader::display(const YAML::Node& node) {
    Screen screen;
    reader_.mapping(node, "a display",
                    {reader_.requiredTextInto("name", screen.localizedName),
                     {"frame", [&](const YAML::Node& value) { screen.frame = frame(value); }, true}});
    return screen;
}

OtherApplication MacReader::application(const YAML::Node& node) {
    OtherApplication application;
    auto members = behaviourInto(application.behaviour);
    members.push_back(reader_.requiredTextInto("name", application.name));
    members.push_back(reader_.requiredTextInto("bundle-identifier", application.bundleIdentifier));
    members.push_back({"window", [&](const YAML::Node& value) { application.window = frame(value); }});
    reader_.mapping(node, "an application", members);
    return application;
}

std::vector<NodeReader::Member> MacReader::behaviourInto(Behaviour& behaviour) {
    return {reader_.flagInto("ignores-quit", behaviour.ignoresTerminate),
            reader_.flagInto("ignores-force-quit", behaviour.ignoresForceTerminate),
            reader_.flagInto("refuses-force-quit", behaviour.refusesForceTerminate),
            reader_.flagInto("declines-activation", behaviour.declinesActivation),
            secondsInto("quits-in", behaviour.exitDelay),
            secondsInto("killed-in", behaviour.killDelay)};
}

NodeReader::Member MacReader::secondsInto(const char* word, std::optional<double>& place) {
    return {word, [this, word, &place](const YAML::Node& value) {
                place = reader_.number(value, "'" + std::string(word) + "'", 0, 3600);
            }};
}

bool MacReader::accessibility(const YAML::Node& node) {
    return reader_.word<bool>(node, "'accessibility'", {{"granted", true}, {"refused", false}});
}

AuthorizationStatus MacReader::capture(const YAML::Node& node, const std::string& what) {
    return reader_.word<AuthorizationStatus>(node, what,
                                             {{"undecided", AuthorizationStatus::notDetermined},
                                              {"restricted", AuthorizationStatus::restricted},
                                              {"refused", AuthorizationStatus::denied},
                                              {"granted", AuthorizationStatus::authorized}});
}

Rect MacReader::frame(const YAML::Node& node) {
    if (!node.IsSequence() || node.size() != 4) {
        reader_.fail(node, "'frame' is not [x, y, width, height]");
        return {};
    }
    constexpr double far = 100'000;
    return {{reader_.number(node[0], "x", -far, far), reader_.number(node[1], "y", -far, far)},
            {reader_.number(node[2], "the width", 1, far), reader_.number(node[3], "the height", 1, far)}};
}

double MacReader::calendar(const YAML::Node& node) {
    const auto seconds = node.IsScalar() ? secondsSince1970(node.Scalar()) : std::nullopt;
    if (!seconds) reader_.fail(node, "'calendar' is not a time such as 2026-03-02T08:00:00Z");
    return seconds.value_or(0);
}

void MacReader::displays(const YAML::Node& node, std::vector<Screen>& displays) {
    displays.clear();
    std::set<std::string> names;
    reader_.list(node, "'displays'", [&](const YAML::Node& one) {
        displays.push_back(display(one));
        const auto& name = displays.back().localizedName;
        if (!name.empty() && !names.insert(name).second) reader_.fail(one, "there are two displays '" + name + "'");
    });
}

InstalledBrowser MacReader::browser(const YAML::Node& node) {
    return reader_.word<InstalledBrowser>(node, "a browser",
                                          {{"chrome", InstalledBrowser::chrome},
                                           {"edge", InstalledBrowser::edge},
                                           {"firefox", InstalledBrowser::firefox}});
}

void MacReader::browsers(const YAML::Node& node, MacConditions& mac) {
    auto& browsers = mac.browsers.emplace();
    reader_.list(node, "'browsers'", [&](const YAML::Node& one) {
        if (!one.IsMap()) return browsers.push_back(browser(one));
        Behaviour behaviour;
        auto members = behaviourInto(behaviour);
        std::optional<InstalledBrowser> named;
        members.push_back({"name", [&](const YAML::Node& value) { named = browser(value); }, true});
        reader_.mapping(one, "a browser", members);
        if (!named) return;
        browsers.push_back(*named);
        mac.behaviours[*named] = behaviour;
    });
}

void MacReader::settings(const YAML::Node& node, std::map<std::string, std::string>& settings) {
    reader_.entries(node, "'settings'", [&](const YAML::Node& key, const YAML::Node& value) {
        settings[key.Scalar()] = reader_.text(value, "'" + key.Scalar() + "'");
    });
}

}  // namespace vantrel::rehearsal
