#include "practice/program/HttpMessages.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace vantrel::practice {

namespace {

namespace http = boost::beast::http;

std::string text(boost::beast::string_view view) {
    return {view.data(), view.size()};
}

char lowerCase(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool standsBefore(const std::pair<std::string, std::string>& one, const std::pair<std::string, std::string>& other) {
    return std::lexicographical_compare(one.first.begin(), one.first.end(), other.first.begin(), other.first.end(),
                                        [](char left, char right) { return lowerCase(left) < lowerCase(right); });
}

bool fitsALine(std::string_view value) {
    return value.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

}  // namespace

PracticeRequest practiceRequest(HttpRequest message) {
    PracticeRequest request;
    request.method = text(message.method_string());
    request.path = text(message.target());
    for (const auto& field : message) request.headers.emplace_back(text(field.name_string()), text(field.value()));
    std::stable_sort(request.headers.begin(), request.headers.end(), standsBefore);
    request.body = std::move(message.body());
    return request;
}

HttpResponse httpResponse(PracticeReply reply) {
    HttpResponse response;
    response.version(11);
    response.result(static_cast<unsigned int>(reply.status));
    for (const auto& [name, value] : reply.headers) {
        if (fitsALine(name) && fitsALine(value)) response.insert(name, value);
    }
    if (fitsALine(reply.contentType)) response.set(http::field::content_type, reply.contentType);
    response.body() = std::move(reply.body);
    response.content_length(response.body().size());
    response.keep_alive(false);
    return response;
}

}  // namespace vantrel::practice
