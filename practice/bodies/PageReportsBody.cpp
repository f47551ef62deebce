#include "practice/bodies/PageReportsBody.h"

#include <algorithm>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <utility>

#include "practice/bodies/BodyShape.h"
#include "practice/bodies/JsonBody.h"

namespace vantrel::practice {

namespace {

using nlohmann::json;
using Type = BodyShape::Type;

bool isPageName(std::string_view text) {
    return !text.empty() && text.size() <= PageReportsBody::longestName &&
           std::all_of(text.begin(), text.end(), [](char character) {
               return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
                      (character >= 'A' && character <= 'Z') || character == '-';
           });
}

std::optional<BodyError> tooLong(const json& value, const std::string& name, std::size_t longest) {
    if (value[name].get_ref<const std::string&>().size() <= longest) return std::nullopt;
    return BodyError{"\"" + name + "\" is longer than " + std::to_string(longest) + " bytes"};
}

template <typename View>
std::variant<PageReport, BodyError> readView(const json& value) {
    static const BodyShape shape({{"number", Type::count},
                                  {"kind", Type::string},
                                  {"width", Type::count},
                                  {"height", Type::count},
                                  {"fullScreen", Type::boolean},
                                  {"visible", Type::boolean},
                                  {"focused", Type::boolean}});
    if (const auto error = shape.wrong(value, "a report")) return *error;
    View view;
    view.width = value["width"];
    view.height = value["height"];
    view.fullScreen = value["fullScreen"];
    view.visible = value["visible"];
    view.focused = value["focused"];
    return PageReport{value["number"], view};
}

std::variant<PageReport, BodyError> readKey(const json& value) {
    static const BodyShape shape({{"number", Type::count},
                                  {"kind", Type::string},
                                  {"key", Type::string},
                                  {"code", Type::string},
                                  {"ctrl", Type::boolean},
                                  {"shift", Type::boolean},
                                  {"alt", Type::boolean},
                                  {"meta", Type::boolean},
                                  {"repeat", Type::boolean}});
    if (const auto error = shape.wrong(value, "a report")) return *error;
    for (const char* name : {"key", "code"}) {
        if (const auto error = tooLong(value, name, PageReportsBody::longestName)) return *error;
    }
    return PageReport{value["number"], PageKey{value["key"], value["code"], value["ctrl"], value["shift"], value["alt"],
                                               value["meta"], value["repeat"]}};
}

template <typename Text>
std::variant<PageReport, BodyError> readText(const json& value) {
    static const BodyShape shape({{"number", Type::count}, {"kind", Type::string}, {"text", Type::string}});
    if (const auto error = shape.wrong(value, "a report")) return *error;
    if (const auto error = tooLong(value, "text", PageReportsBody::longestText)) return *error;
    return PageReport{value["number"], Text{value["text"]}};
}

bool isOneOf(const json& value, std::initializer_list<std::string_view> texts) {
    return std::find(texts.begin(), texts.end(), value.get_ref<const std::string&>()) != texts.end();
}

std::variant<PageReport, BodyError> readDevice(const json& value) {
    static const BodyShape shape({{"number", Type::count},
                                  {"kind", Type::string},
                                  {"device", Type::string},
                                  {"state", Type::string},
                                  {"detail", Type::string}});
    if (const auto error = shape.wrong(value, "a report")) return *error;
    if (!isOneOf(value["device"], {"camera", "microphone"})) {
        return BodyError{"\"device\" is not \"camera\" or \"microphone\""};
    }
    if (!isOneOf(value["state"], {"granted", "live", "refused", "missing", "failed", "ended"})) {
        return BodyError{"\"state\" is not \"granted\", \"live\", \"refused\", \"missing\", \"failed\" or \"ended\""};
    }
    if (const auto error = tooLong(value, "detail", PageReportsBody::longestText)) return *error;
    return PageReport{value["number"], PageDevice{value["device"], value["state"], value["detail"]}};
}

std::variant<PageReport, BodyError> readReport(const json& value) {
    if (!value.is_object()) return BodyError{"a report is not a JSON object"};
    const auto kind = value.find("kind");
    if (kind == value.end()) return BodyError{"a report lacks \"kind\""};
    if (*kind == "opened") return readView<PageOpened>(value);
    if (*kind == "view") return readView<PageView>(value);
    if (*kind == "key") return readKey(value);
    if (*kind == "text") return readText<PageText>(value);
    if (*kind == "message") return readText<PageMessage>(value);
    if (*kind == "device") return readDevice(value);
    return BodyError{"a report's \"kind\" is not \"opened\", \"view\", \"key\", \"text\", \"message\" or \"device\""};
}

}  // namespace

std::variant<PageReportsBody, BodyError> PageReportsBody::read(const std::string& body) {
    static const BodyShape shape({{"page", Type::string}, {"reports", Type::array}});
    if (body.size() > largestBody) {
        return BodyError{"the body is longer than " + std::to_string(largestBody) + " bytes"};
    }
    const auto parsed = jsonBody(body);
    if (const auto* error = std::get_if<BodyError>(&parsed)) return *error;
    const auto& value = std::get<json>(parsed);
    if (const auto error = shape.wrong(value, "the body")) return *error;

    PageReportsBody read;
    read.page = value["page"];
    if (!isPageName(read.page)) return BodyError{"\"page\" is not 1 to 64 letters, digits and \"-\""};
    if (value["reports"].empty()) return BodyError{"\"reports\" is empty"};
    for (const json& item : value["reports"]) {
        auto report = readReport(item);
        if (const auto* error = std::get_if<BodyError>(&report)) return *error;
        const std::uint64_t last = read.reports.empty() ? 0 : read.reports.back().number;
        if (std::get<PageReport>(report).number <= last) {
            return BodyError{"the reports' numbers do not ascend from 1"};
        }
        read.reports.push_back(std::move(std::get<PageReport>(report)));
    }
    return read;
}

}  // namespace vantrel::practice
