#include "rehearsal/reading/MacReader.h"

#include <algorithm>
#include <set>
#include <span>

#include "rehearsal/reading/CalendarTime.h"

namespace vantrel::rehearsal {

MacSetup MacReader::read(const YAML::Node& node) {
    MacSetup mac;
    auto members = conditionsInto(mac);
    members.insert(
        members.end(),
        {{"bundle-identifier",
          [&](const YAML::Node& value) { mac.bundleIdentifier = textOrNone(value, "'bundle-identifier'"); }},
         {"seed",
          [&](const YAML::Node& value) {
              mac.seed = static_cast<std::uint64_t>(reader_.whole(value, "'seed'", 0, 9'007'199'254'740'991));
          }},
         {"macos",
          [&](const YAML::Node& value) { mac.macOS = static_cast<int>(reader_.whole(value, "'macos'", 13, 99)); }},
         {"calendar", [&](const YAML::Node& value) { mac.calendar = calendar(value); }},
         reader_.textInto("home", mac.home),
         {"displays", [&](const YAML::Node& value) { displays(value, mac.displays); }},
         reader_.flagInto("separate-spaces", mac.separateSpaces),
         {"settings", [&](const YAML::Node& value) { settings(value, mac.settings); }}});
    reader_.mapping(node, "'mac'", members);
    checkSafari(node, mac);
    return mac;
}

MacConditions MacReader::readAfterPrelude(const YAML::Node& node) {
    MacConditions mac;
    auto members = conditionsInto(mac);
    for (const char* word : {"bundle-identifier", "seed", "macos", "calendar", "home", "separate-spaces", "settings"}) {
        members.push_back(reader_.settledByPrelude(word));
    }
    members.push_back(reader_.settledByPrelude("displays", "; a step can plug, unplug, arrange or mirror one"));
    reader_.mapping(node, "'mac'", members);
    checkSafari(node, mac);
    return mac;
}

void MacReader::checkSafari(const YAML::Node& node, const MacConditions& mac) {
    if (mac.safari.value_or(true) || !mac.browsers || !mac.browsers->contains(BrowserName::safari)) return;
    reader_.fail(node, "Safari stands among the browsers, and 'safari' says that there is none");
}

std::vector<NodeReader::Member> MacReader::conditionsInto(MacConditions& mac) {
    return {{"accessibility", [&](const YAML::Node& value) { mac.accessibility = accessibility(value); }},
            {"microphone", [&](const YAML::Node& value) { mac.microphone = capture(value, "'microphone'"); }},
            {"camera", [&](const YAML::Node& value) { mac.camera = capture(value, "'camera'"); }},
            {"activation", [&](const YAML::Node& value) { mac.activation = activation(value); }},
            {"alerts-let-in", [&](const YAML::Node& value) { mac.alertsLetIn = alertsLetIn(value); }},
            {"alerts-activate",
             [&](const YAML::Node& value) { mac.alertsActivate = reader_.flag(value, "'alerts-activate'"); }},
            {"lost-accessibility",
             [&](const YAML::Node& value) {
                 mac.lostAccessibility = reader_.word<LostAccessibility>(value, "'lost-accessibility'",
                                                                         {{"frees", LostAccessibility::frees},
                                                                          {"freezes", LostAccessibility::freezes},
                                                                          {"hides", LostAccessibility::hides}});
             }},
            {"browsers", [&](const YAML::Node& value) { mac.browsers = browsers_.browsers(value); }},
            {"safari", [&](const YAML::Node& value) { mac.safari = reader_.flag(value, "'safari'"); }},
            reader_.secondsInto("window-flags-lag", mac.flagDelay),
            reader_.secondsInto("full-screen-takes", mac.fullScreenDuration),
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
    auto members = browsers_.behaviourInto(application.behaviour);
    members.insert(
        members.end(),
        {{"name", [&](const YAML::Node& value) { application.name = textOrNone(value, "'name'").value_or(""); }, true},
         {"bundle-identifier",
          [&](const YAML::Node& value) { application.bundleIdentifier = textOrNone(value, "'bundle-identifier'"); },
          true},
         {"window", [&](const YAML::Node& value) { application.window = frame(value); }}});
    reader_.mapping(node, "an application", members);
    return application;
}

std::optional<std::string> MacReader::textOrNone(const YAML::Node& node, const std::string& what) {
    const auto text = reader_.nonEmptyText(node, what);
    return text == "none" ? std::nullopt : std::optional(text);
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

virtualmac::ActivationAnswer MacReader::activation(const YAML::Node& node) {
    using virtualmac::ActivationAnswer;
    return reader_.word<ActivationAnswer>(node, "'activation'",
                                          {{"brings", ActivationAnswer::brings},
                                           {"refused", ActivationAnswer::refuses},
                                           {"ignored", ActivationAnswer::ignores},
                                           {"late", ActivationAnswer::comesLate}});
}

virtualmac::AlertsLetIn MacReader::alertsLetIn(const YAML::Node& node) {
    using virtualmac::AlertsLetIn;
    return reader_.word<AlertsLetIn>(node, "'alerts-let-in'",
                                     {{"at-once", AlertsLetIn::atOnce},
                                      {"ordered-front", AlertsLetIn::orderedFront},
                                      {"joining-all", AlertsLetIn::joiningAll},
                                      {"with-client", AlertsLetIn::withClient},
                                      {"never", AlertsLetIn::never}});
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
        const auto& [name, frame] = displays.back();
        if (displays.size() == 1 && frame.origin != Point{}) reader_.fail(one, "the first display is not at 0 0");
        const auto others = std::span(displays).first(displays.size() - 1);
        if (std::any_of(others.begin(), others.end(),
                        [&frame = frame](const Screen& other) { return other.frame.origin == frame.origin; })) {
            reader_.fail(one, "there are two displays at one place");
        }
        if (!name.empty() && !names.insert(name).second) reader_.fail(one, "there are two displays '" + name + "'");
    });
}

void MacReader::settings(const YAML::Node& node, std::map<std::string, std::string>& settings) {
    reader_.entries(node, "'settings'", [&](const YAML::Node& key, const YAML::Node& value) {
        settings[key.Scalar()] = reader_.text(value, "'" + key.Scalar() + "'");
    });
}

}  // namespace vantrel::rehearsal
