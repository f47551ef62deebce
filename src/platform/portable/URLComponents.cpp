#include "platform/portable/URLComponents.h"

#include <algorithm>

namespace vantrel {

namespace {

std::string withoutDotSegments(std::string_view input) {
    std::string output;
    const auto dropLastSegment = [&output] {
        const auto slash = output.rfind('/');
        output.erase(slash == std::string::npos ? 0 : slash);
    };
    while (!input.empty()) {
        if (input.starts_with("../")) {
            input.remove_prefix(3);
        } else if (input.starts_with("./") || input.starts_with("/./")) {
            input.remove_prefix(2);
        } else if (input == "/.") {
            input = "/";
        } else if (input.starts_with("/../")) {
            input.remove_prefix(3);
            dropLastSegment();
        } else if (input == "/..") {
            input = "/";
            dropLastSegment();
        } else if (input == "." || input == "..") {
            input = {};
        } else {
            const auto end = std::min(input.find('/', 1), input.size());
            output += input.substr(0, end);
            input.remove_prefix(end);
        }
    }
    return output;
}

std::string merged(const URLComponents& base, const std::string& path) {
    if (base.authority && base.path.empty()) return "/" + path;
    const auto slash = base.path.rfind('/');
    return (slash == std::string::npos ? std::string() : base.path.substr(0, slash + 1)) + path;
}

}  // namespace

URLComponents URLComponents::split(std::string_view text) {
    URLComponents parts;
    if (const auto hash = text.find('#'); hash != std::string_view::npos) {
        parts.fragment = text.substr(hash + 1);
        text = text.substr(0, hash);
    }
    if (const auto mark = text.find('?'); mark != std::string_view::npos) {
        parts.query = text.substr(mark + 1);
        text = text.substr(0, mark);
    }
    if (const auto colon = text.find(':'); colon != std::string_view::npos && colon < text.find('/')) {
        parts.scheme = text.substr(0, colon);
        text = text.substr(colon + 1);
    }
    if (text.starts_with("//")) {
        text.remove_prefix(2);
        const auto end = std::min(text.find('/'), text.size());
        parts.authority = text.substr(0, end);
        text = text.substr(end);
    }
    parts.path = text;
    return parts;
}

std::string URLComponents::joined() const {
    std::string text;
    if (scheme) text += *scheme + ":";
    if (authority) text += "//" + *authority;
    text += path;
    if (query) text += "?" + *query;
    if (fragment) text += "#" + *fragment;
    return text;
}

std::optional<std::string> scheme(const URL& url) {
    auto result = URLComponents::split(url.absoluteString).scheme;
    if (!result) return std::nullopt;
    for (char& letter : *result) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return result;
}

std::string requestTarget(const URL& url) {
    const URLComponents parts = URLComponents::split(url.absoluteString);
    return (parts.path.empty() ? "/" : parts.path) + (parts.query ? "?" + *parts.query : "");
}

std::string resolved(const URL& base, std::string_view reference) {
    const URLComponents from = URLComponents::split(base.absoluteString);
    URLComponents to = URLComponents::split(reference);
    if (to.scheme) {
        to.path = withoutDotSegments(to.path);
        return to.joined();
    }
    to.scheme = from.scheme;
    if (to.authority) {
        to.path = withoutDotSegments(to.path);
        return to.joined();
    }
    to.authority = from.authority;
    if (to.path.empty()) {
        to.path = from.path;
        if (!to.query) to.query = from.query;
    } else {
        to.path = withoutDotSegments(to.path.starts_with('/') ? to.path : merged(from, to.path));
    }
    return to.joined();
}

}  // namespace vantrel
