#include "rehearsal/reading/BrowserReader.h"

#include <optional>

namespace vantrel::rehearsal {

InstalledBrowsers BrowserReader::browsers(const YAML::Node& node) {
    InstalledBrowsers browsers;
    named_.clear();
    reader_.list(node, "'browsers'", [&](const YAML::Node& one) {
        if (one.IsMap()) return described(one, browsers);
        browsers.emplace(name(one), InstalledBrowser());
    });
    return browsers;
}

BrowserName BrowserReader::name(const YAML::Node& node) {
    if (node.IsScalar() && !named_.insert(node.Scalar()).second) {
        reader_.fail(node, "'" + node.Scalar() + "' stands twice in 'browsers'");
    }
    return reader_.word<BrowserName>(node, "a browser",
                                     {{"chrome", BrowserName::chrome},
                                      {"edge", BrowserName::edge},
                                      {"firefox", BrowserName::firefox},
                                      {"safari", BrowserName::safari}});
}

void BrowserReader::described(const YAML::Node& node, InstalledBrowsers& browsers) {
    InstalledBrowser browser;
    std::optional<BrowserName> named;
    auto members = membersInto(browser);
    members.push_back({"name", [&](const YAML::Node& value) { named = name(value); }, true});
    reader_.mapping(node, "a browser", members);
    if (!named) return;
    const bool isSafari = *named == BrowserName::safari;
    if (isSafari && browser.isInHome) reader_.fail(node, "Safari is part of the system and not in the home folder");
    if (!isSafari && (browser.answerDelay || browser.answersWithNothing)) {
        reader_.fail(node, "the system answers for Safari only, which opens addresses");
    }
    browsers.emplace(*named, browser);
}

std::vector<NodeReader::Member> BrowserReader::membersInto(InstalledBrowser& browser) {
    auto members = behaviourInto(browser.behaviour);
    members.insert(
        members.end(),
        {reader_.flagInto("in-home", browser.isInHome),
         {"cannot-start",
          [&](const YAML::Node& value) { browser.startFailure = reader_.nonEmptyText(value, "'cannot-start'"); }},
         reader_.secondsInto("starts-in", browser.appearsAfter),
         reader_.secondsInto("opens-window-in", browser.windowAfter),
         reader_.secondsInto("ends-in", browser.exitsAfter),
         reader_.flagInto("forks", browser.forks),
         reader_.secondsInto("answers-in", browser.answerDelay),
         {"answers-with", [&](const YAML::Node& value) {
              browser.answersWithNothing = reader_.word<bool>(value, "'answers-with'", {{"nothing", true}});
          }}});
    return members;
}

std::vector<NodeReader::Member> BrowserReader::behaviourInto(Behaviour& behaviour) {
    return {reader_.flagInto("ignores-quit", behaviour.ignoresTerminate),
            reader_.flagInto("ignores-force-quit", behaviour.ignoresForceTerminate),
            reader_.flagInto("refuses-force-quit", behaviour.refusesForceTerminate),
            reader_.flagInto("declines-activation", behaviour.declinesActivation),
            reader_.secondsInto("quits-in", behaviour.exitDelay),
            reader_.secondsInto("killed-in", behaviour.killDelay)};
}

}  // namespace vantrel::rehearsal
