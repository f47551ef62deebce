#include "platform/linux/x11/X11WindowSurvey.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <utility>

#include "platform/portable/UTF8Validity.h"

namespace vantrel::linuxdesktop {

namespace {

using Values = std::vector<std::uint32_t>;

// The layers that macOS gives to the Dock, to the desktop picture and to floating panels.
constexpr std::int64_t dockLayer = 20;
constexpr std::int64_t desktopLayer = -2147483623;
constexpr std::int64_t floatingLayer = 3;
constexpr std::int64_t ordinaryLayer = 0;

constexpr std::uint32_t longestProperty = 1024;

struct Atoms {
    explicit Atoms(X11Connection& connection)
        : title(connection.atom("_NET_WM_NAME")),
          type(connection.atom("_NET_WM_WINDOW_TYPE")),
          state(connection.atom("_NET_WM_STATE")),
          desktop(connection.atom("_NET_WM_DESKTOP")),
          frameExtents(connection.atom("_NET_FRAME_EXTENTS")),
          shadowExtents(connection.atom("_GTK_FRAME_EXTENTS")),
          allowed(connection.atom("_NET_WM_ALLOWED_ACTIONS")),
          motif(connection.atom("_MOTIF_WM_HINTS")),
          hidden(connection.atom("_NET_WM_STATE_HIDDEN")),
          fullScreen(connection.atom("_NET_WM_STATE_FULLSCREEN")),
          maximizedWide(connection.atom("_NET_WM_STATE_MAXIMIZED_HORZ")),
          maximizedHigh(connection.atom("_NET_WM_STATE_MAXIMIZED_VERT")),
          mayClose(connection.atom("_NET_WM_ACTION_CLOSE")),
          mayBeFullScreen(connection.atom("_NET_WM_ACTION_FULLSCREEN")) {
        for (const char* name : {"NORMAL", "DIALOG", "UTILITY"}) addLayer(connection, name, ordinaryLayer);
        for (const char* name :
             {"TOOLBAR", "MENU", "SPLASH", "DROPDOWN_MENU", "POPUP_MENU", "TOOLTIP", "NOTIFICATION", "COMBO", "DND"}) {
            addLayer(connection, name, floatingLayer);
        }
        addLayer(connection, "DOCK", dockLayer);
        addLayer(connection, "DESKTOP", desktopLayer);
    }

    void addLayer(X11Connection& connection, const std::string& name, std::int64_t layer) {
        layers.emplace(connection.atom("_NET_WM_WINDOW_TYPE_" + name), layer);
    }

    const xcb_atom_t title, type, state, desktop, frameExtents, shadowExtents, allowed, motif;
    const xcb_atom_t hidden, fullScreen, maximizedWide, maximizedHigh, mayClose, mayBeFullScreen;
    std::map<xcb_atom_t, std::int64_t> layers;
};

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

// The requests about one window, and what their answers say.
class Inquiry {
  public:
    Inquiry(X11Connection& connection, const Atoms& atoms, xcb_window_t window)
        : connection_(connection.get()), atoms_(atoms), window_(window) {
        attributes_ = xcb_get_window_attributes(connection_, window);
        size_ = xcb_get_geometry(connection_, window);
        place_ = xcb_translate_coordinates(connection_, window, connection.root(), 0, 0);
        const std::array<xcb_atom_t, propertyCount> properties{
            atoms.title,        XCB_ATOM_WM_NAME,    atoms.type,    atoms.state, atoms.desktop,
            atoms.frameExtents, atoms.shadowExtents, atoms.allowed, atoms.motif};
        for (std::size_t i = 0; i < propertyCount; ++i) {
            properties_[i] =
                xcb_get_property(connection_, 0, window, properties[i], XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
        }
    }

    // Every answer is read, even for a window that is gone: an unread one stays with the connection.
    std::optional<X11WindowFacts> answer() {
        const X11Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(connection_, attributes_, nullptr));
        const X11Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(connection_, size_, nullptr));
        const X11Reply<xcb_translate_coordinates_reply_t> place(
            xcb_translate_coordinates_reply(connection_, place_, nullptr));
        std::array<Property, propertyCount> properties;
        for (std::size_t i = 0; i < propertyCount; ++i) {
            properties[i].reset(xcb_get_property_reply(connection_, properties_[i], nullptr));
        }
        if (!attributes || !size || !place) return std::nullopt;

        X11WindowFacts facts;
        facts.window = window_;
        facts.viewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
        facts.unmapped = attributes->map_state == XCB_MAP_STATE_UNMAPPED;
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
        facts.frame = {place->dst_x - margins.left, place->dst_y - margins.top,
                       size->width + margins.left + margins.right, size->height + margins.top + margins.bottom};
        return facts;
    }

  private:
    enum Index { title, oldTitle, type, state, desktop, frameExtents, shadowExtents, allowed, motif, propertyCount };
    using Property = X11Reply<xcb_get_property_reply_t>;

    static Values values(const Property& reply) {
        if (!reply || reply->format != 32) return {};
        const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        return {first, first + xcb_get_property_value_length(reply.get()) / 4};
    }

    static std::optional<std::string> text(const Property& reply) {
        if (!reply || reply->format != 8) return std::nullopt;
        const std::string_view read(static_cast<const char*>(xcb_get_property_value(reply.get())),
                                    static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
        return reply->type == XCB_ATOM_STRING ? fromLatin1(read) : repairedUTF8(read);
    }

    static X11Margins difference(const X11Margins& a, const X11Margins& b) {
        return {a.left - b.left, a.right - b.right, a.top - b.top, a.bottom - b.bottom};
    }

    // A window lists its types in order of preference.
    void readType(X11WindowFacts& facts, const Values& types) const {
        for (const std::uint32_t named : types) {
            const auto known = atoms_.layers.find(named);
            if (known == atoms_.layers.end()) continue;
            facts.layer = known->second;
            return;
        }
    }

    void readState(X11WindowFacts& facts, const Values& states) const {
        facts.hidden = contains(states, atoms_.hidden);
        facts.fullScreen = contains(states, atoms_.fullScreen);
        facts.maximized = contains(states, atoms_.maximizedWide) || contains(states, atoms_.maximizedHigh);
    }

    // Not every window manager lists the allowed actions of a window.
    void readActions(X11WindowFacts& facts, const Values& actions, const Values& hints) const {
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

    xcb_connection_t* connection_;
    const Atoms& atoms_;
    xcb_window_t window_;
    xcb_get_window_attributes_cookie_t attributes_{};
    xcb_get_geometry_cookie_t size_{};
    xcb_translate_coordinates_cookie_t place_{};
    std::array<xcb_get_property_cookie_t, propertyCount> properties_{};
};

}  // namespace

std::vector<X11WindowFacts> X11WindowSurvey::of(const std::vector<xcb_window_t>& windows) {
    const Atoms atoms(connection_);
    std::vector<Inquiry> inquiries;
    inquiries.reserve(windows.size());
    for (const xcb_window_t window : windows) inquiries.emplace_back(connection_, atoms, window);
    const std::vector<ProcessIdentifier> owners = windows_.owners(windows);
    std::vector<X11WindowFacts> all;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        auto facts = inquiries[i].answer();
        if (!facts) continue;
        facts->owner = owners[i];
        all.push_back(std::move(*facts));
    }
    return all;
}

std::optional<X11WindowFacts> X11WindowSurvey::of(xcb_window_t window) {
    auto found = of(std::vector{window});
    if (found.empty()) return std::nullopt;
    return std::move(found.front());
}

std::optional<std::vector<X11WindowFacts>> X11WindowSurvey::frontToBack() {
    auto all = of(windows_.frontToBack());
    if (!connection_.isAlive()) return std::nullopt;
    return all;
}

std::vector<X11WindowFacts> X11WindowSurvey::ofProcess(ProcessIdentifier process) {
    // Whether they are still there, the inquiry finds out.
    std::vector<X11WindowFacts> found = of(windows_.listedOf(process));
    std::erase_if(found, [](const X11WindowFacts& facts) { return facts.layer != ordinaryLayer; });
    return found;
}

}  // namespace vantrel::linuxdesktop
