#include "record/LookWriter.h"

#include <cmath>
#include <string>

namespace vantrel {

namespace {

JSONValue number(double value) {
    return std::isfinite(value) ? JSONValue(value) : JSONValue();
}

template <class Number>
JSONValue number(const std::optional<Number>& value) {
    return value ? JSONValue(static_cast<double>(*value)) : JSONValue();
}

JSONValue text(const std::optional<std::string>& value) {
    return value ? JSONValue(*value) : JSONValue();
}

JSONValue rectangle(const Rect& rect) {
    return JSONArray{number(rect.origin.x), number(rect.origin.y), number(rect.size.width), number(rect.size.height)};
}

JSONValue screen(const Screen& shown) {
    return JSONObject{{"name", shown.localizedName}, {"frame", rectangle(shown.frame)}};
}

JSONValue window(const WindowEntry& entry) {
    return JSONObject{{"number", number(entry.number)},
                      {"process", number(entry.ownerPID)},
                      {"owner", text(entry.ownerName)},
                      {"title", text(entry.name)},
                      {"layer", number(entry.layer)},
                      {"bounds", entry.bounds ? rectangle(*entry.bounds) : JSONValue()},
                      {"onscreen", entry.isOnscreen ? JSONValue(*entry.isOnscreen) : JSONValue()}};
}

JSONValue windows(const std::optional<std::vector<WindowEntry>>& list) {
    if (!list) return {};
    JSONArray written;
    for (const WindowEntry& entry : *list) written.push_back(window(entry));
    return written;
}

JSONValue front(const std::optional<FrontApplication>& application) {
    if (!application) return {};
    return JSONObject{{"process", JSONValue(static_cast<double>(application->process))},
                      {"bundle", text(application->bundle)},
                      {"name", text(application->name)}};
}

const char* word(LookCause cause) {
    switch (cause) {
        case LookCause::start:
            return "start";
        case LookCause::time:
            return "time";
        case LookCause::space:
            return "space";
        case LookCause::screens:
            break;
    }
    return "screens";
}

}  // namespace

bool LookWriter::write(const Look& look) {
    JSONArray screens;
    for (const Screen& each : look.screens) screens.push_back(screen(each));
    const JSONObject object{{"line", ++lines_},
                            {"cause", word(look.cause)},
                            {"uptime", number(look.uptime)},
                            {"time", number(look.secondsSince1970)},
                            {"front", front(look.front)},
                            {"screens", std::move(screens)},
                            {"main-screen", look.mainScreen ? screen(*look.mainScreen) : JSONValue()},
                            {"separate-spaces", look.separateSpaces},
                            {"windows", windows(look.windows)}};
    const auto line = json_.serialise(object);
    return !line || sink_(*line);
}

}  // namespace vantrel
