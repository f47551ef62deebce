#include "rehearsal/MacReader.h"

#include <set>

#include "rehearsal/CalendarTime.h"

namespace vantrel::rehearsal {

MacSetup MacReader::read(const YAML::Node& node) {
    MacSetup mac;
    reader_.mapping(node, "'mac'",
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
                     {"accessibility", [&](const YAML::Node& value) { mac.accessibility = accessibility(value); }},
                     {"microphone", [&](const YAML::Node& value) { mac.microphone = capture(value, "'microphone'"); }},
                     {"camera", [&](const YAML::Node& value) { mac.camera = capture(value, "'camera'"); }},
                     {"settings", [&](const YAML::Node& value) { settings(value, mac.settings); }},
                     {"browsers", [&](const YAML::Node& value) { browsers(value, mac.browsers); }},
                     {"applications", [&](const YAML::Node& value) {
                          reader_.list(value, "'applications'",
                                       [&](const YAML::Node& one) { mac.applications.push_back(application(one)); });
                      }}});
    return mac;
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
    reader_.mapping(node, "an application",
                    {reader_.requiredTextInto("name", application.name),
                     reader_.requiredTextInto("bundle-identifier", application.bundleIdentifier)});
    return application;
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

void MacReader::browsers(const YAML::Node& node, std::vector<InstalledBrowser>& browsers) {
    browsers.clear();
    reader_.list(node, "'browsers'", [&](const YAML::Node& one) {
        browsers.push_back(reader_.word<InstalledBrowser>(one, "a browser",
                                                          {{"chrome", InstalledBrowser::chrome},
                                                           {"edge", InstalledBrowser::edge},
                                                           {"firefox", InstalledBrowser::firefox}}));
    });
}

void MacReader::settings(const YAML::Node& node, std::map<std::string, std::string>& settings) {
    reader_.entries(node, "'settings'", [&](const YAML::Node& key, const YAML::Node& value) {
        settings[key.Scalar()] = reader_.text(value, "'" + key.Scalar() + "'");
    });
}

}  // namespace vantrel::rehearsal
