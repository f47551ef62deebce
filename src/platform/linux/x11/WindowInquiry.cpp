#include "platform/linux/x11/WindowInquiry.h"

#include <algorithm>
#include <string_view>

#include "platform/portable/UTF8Validity.h"

namespace vantrel::linuxdesktop {

namespace {

using Property = X11Reply<xcb_get_property_reply_t>;
using Values = std::vector<std::uint32_t>;

constexpr std::uint32_t longestProperty = 1024;

bool contains(const Values& values, std::uint32_t value) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

std::string fromLatin1(std::string_view text) {
    constexpr unsigned char firstOfTwoBytes = 0x80;
    std::string converted;
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < firstOfTwoBytes) {
            converted += character;
        } else {
            converted += static_cast<char>(0xC0 | (code >> 6));
            converted += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return converted;
}

X11Margins toMargins(const Values& values) {
    if (values.size() < 4) return {};
    const auto side = [&values](std::size_t index) { return static_cast<int>(values[index]); };
    return {side(0), side(1), side(2), side(3)};
}

Values values(const Property& reply) {
    if (!reply || reply->format != 32) return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + xcb_get_property_value_length(reply.get()) / 4};
}

std::optional<std::string> text(const Property& reply) {
    if (!reply || reply->format != 8) return std::nullopt;
    const std::string_view read(static_cast<const char*>(xcb_get_property_value(reply.get())),
                                static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    return reply->type == XCB_ATOM_STRING ? fromLatin1(read) : repairedUTF8(read);
}

X11Margins difference(const X11Margins& a, const X11Margins& b) {
    return {a.left - b.left, a.right - b.right, a.top - b.top, a.bottom - b.bottom};
}

}  // namespace

WindowInquiry::WindowInquiry(X11Connection& connection, const WindowAtoms& atoms, xcb_window_t window, About about)
    : connection_(connection.get()), atoms_(atoms), window_(window), about_(about) {
    if (about == About::everything || about == About::look) {
        place_ = {xcb_get_window_attributes(connection_, window), xcb_get_geometry(connection_, window),
                  xcb_translate_coordinates(connection_, window, connection.root(), 0, 0)};
    }
    const std::array<xcb_atom_t, propertyCount> properties{atoms.title,         XCB_ATOM_WM_NAME, atoms.type,
                                                           atoms.state,         atoms.desktop,    atoms.frameExtents,
                                                           atoms.shadowExtents, atoms.allowed,    atoms.motif};
    for (std::size_t i = 0; i < propertyCount; ++i) {
        if (!asksFor(i)) continue;
        properties_[i] =
            xcb_get_property(connection_, 0, window, properties[i], XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
    }
}

bool WindowInquiry::asksFor(std::size_t property) const {
    switch (about_) {
        case About::everything:
            return true;
        case About::look:
            return property != allowed && property != motif;
        case About::state:
            return property == state;
        case About::layer:
            return property == type;
    }
    return false;
}

// Every answer is read, even for a window that is gone: an unread one stays with the connection. A window that lacks a
// property answers too.
std::optional<X11WindowFacts> WindowInquiry::answer() {
    X11WindowFacts facts;
    facts.window = window_;
    bool isThere = readPlace(facts);
    std::array<Property, propertyCount> properties;
    for (std::size_t i = 0; i < propertyCount; ++i) {
        if (!asksFor(i)) continue;
        properties[i].reset(xcb_get_property_reply(connection_, properties_[i], nullptr));
        isThere = isThere && properties[i];
    }
    if (!isThere) return std::nullopt;

    facts.title = text(properties[title]);
    if (!facts.title) facts.title = text(properties[oldTitle]);
    readType(facts, values(properties[type]));
    readState(facts, values(properties[state]));
    const Values onDesktop = values(properties[desktop]);
    if (!onDesktop.empty()) facts.desktop = onDesktop.front();
    readActions(facts, values(properties[allowed]), values(properties[motif]));
    if (!facts.fullScreen) {
        facts.shadow = toMargins(values(properties[shadowExtents]));
        facts.margins = difference(toMargins(values(properties[frameExtents])), facts.shadow);
    }
    const X11Margins& margins = facts.margins;
    facts.frame = {facts.frame.x - margins.left, facts.frame.y - margins.top,
                   facts.frame.width + margins.left + margins.right, facts.frame.height + margins.top + margins.bottom};
    return facts;
}

// False if the window is gone.
bool WindowInquiry::readPlace(X11WindowFacts& facts) const {
    if (!place_) return true;
    const X11Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection_, place_->attributes, nullptr));
    const X11Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(connection_, place_->size, nullptr));
    const X11Reply<xcb_translate_coordinates_reply_t> position(
        xcb_translate_coordinates_reply(connection_, place_->position, nullptr));
    if (!attributes || !size || !position) return false;
    facts.viewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    facts.unmapped = attributes->map_state == XCB_MAP_STATE_UNMAPPED;
    facts.frame = {position->dst_x, position->dst_y, size->width, size->height};
    return true;
}

// A window lists its types in order of preference.
void WindowInquiry::readType(X11WindowFacts& facts, const Values& types) const {
    for (const std::uint32_t named : types) {
        const auto known = atoms_.layers.find(named);
        if (known == atoms_.layers.end()) continue;
        facts.layer = known->second;
        return;
    }
}

void WindowInquiry::readState(X11WindowFacts& facts, const Values& states) const {
    facts.hidden = contains(states, atoms_.hidden);
    facts.fullScreen = contains(states, atoms_.fullScreen);
    facts.maximized = contains(states, atoms_.maximizedWide) || contains(states, atoms_.maximizedHigh);
}

// Not every window manager lists the allowed actions of a window.
void WindowInquiry::readActions(X11WindowFacts& facts, const Values& actions, const Values& hints) const {
    constexpr std::uint32_t hasFunctions = 1;
    constexpr std::uint32_t allFunctionsBut = 1;
    constexpr std::uint32_t close = 32;
    if (!actions.empty()) {
        facts.closable = contains(actions, atoms_.mayClose);
        facts.mayBeFullScreen = facts.fullScreen || contains(actions, atoms_.mayBeFullScreen);
    }
    if (hints.size() < 2 || (hints[0] & hasFunctions) == 0) return;
    const bool named = (hints[1] & close) != 0;
    const bool inverted = (hints[1] & allFunctionsBut) != 0;
    if (named == inverted) facts.closable = false;
}

}  // namespace vantrel::linuxdesktop
