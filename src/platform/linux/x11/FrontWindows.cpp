#include "platform/linux/x11/FrontWindows.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "platform/linux/x11/X11Watcher.h"

namespace vantrel::linuxdesktop {

namespace {

using namespace std::chrono_literals;

// Stacking changes come in bursts, and our own raise is one of them.
constexpr auto firstAnswer = 30ms;
constexpr auto slowestAnswer = 960ms;
// An opponent that is quiet for this long is forgotten.
constexpr auto peace = 2s;

bool intersect(const X11Rectangle& a, const X11Rectangle& b) {
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

}  // namespace

struct FrontWindows::Layer {
    xcb_window_t window = XCB_WINDOW_NONE;
    X11Rectangle frame;
    /// Invisible windows that only catch the pointer do not count.
    bool seen = false;
};

class FrontWindows::Keeping final : public Observation {
  public:
    Keeping(FrontWindows& owner, std::shared_ptr<Kept> kept) : owner_(owner), kept_(std::move(kept)) {}
    ~Keeping() override { owner_.end(kept_); }

  private:
    FrontWindows& owner_;
    const std::shared_ptr<Kept> kept_;
};

struct FrontWindows::Observer {
    Block block;
};

class FrontWindows::Removal final : public Observation {
  public:
    explicit Removal(std::shared_ptr<Observer> observer) : observer_(std::move(observer)) {}

  private:
    const std::shared_ptr<Observer> observer_;
};

FrontWindows::FrontWindows(X11Connection& connection, X11Watcher& watcher) : connection_(connection) {
    settle_.setSingleShot(true);
    settle_.setInterval(firstAnswer);
    QObject::connect(&settle_, &QTimer::timeout, [this] { restack(); });
    stacking_ = watcher.observe(X11Watcher::Change::stacking, [this] { changed(); });
}

FrontWindows::~FrontWindows() = default;

std::unique_ptr<Observation> FrontWindows::keep(xcb_window_t window, Rank rank) {
    auto kept = std::make_shared<Kept>(Kept{window, rank});
    begin(kept);
    return std::make_unique<Keeping>(*this, std::move(kept));
}

void FrontWindows::begin(const std::shared_ptr<Kept>& kept) {
    const bool before = keepsAnOverlay();
    const auto next =
        std::find_if(kept_.begin(), kept_.end(), [&kept](const auto& one) { return one->rank > kept->rank; });
    kept_.insert(next, kept);
    if (keepsAnOverlay() != before) tell();
}

void FrontWindows::end(const std::shared_ptr<Kept>& kept) {
    const bool before = keepsAnOverlay();
    std::erase(kept_, kept);
    if (keepsAnOverlay() != before) tell();
}

// The lowest rank comes first.
bool FrontWindows::keepsAnOverlay() const {
    return !kept_.empty() && kept_.front()->rank == Rank::overlay;
}

std::unique_ptr<Observation> FrontWindows::observeOverlays(Block block) {
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
    auto observer = std::make_shared<Observer>(Observer{std::move(block)});
    observers_.push_back(observer);
    return std::make_unique<Removal>(std::move(observer));
}

void FrontWindows::tell() const {
    const auto told = observers_;
    for (const auto& weak : told) {
        if (const auto observer = weak.lock()) observer->block();
    }
}

void FrontWindows::changed() {
    if (kept_.empty() || settle_.isActive()) return;
    if (std::chrono::steady_clock::now() - lastRaise_ > peace) settle_.setInterval(firstAnswer);
    settle_.start();
}

void FrontWindows::restack() {
    if (kept_.empty()) return;
    auto now = layers();
    if (!now) return;
    bool raised = false;
    for (const auto& kept : kept_) raised = restack(*kept, *now) || raised;
    xcb_flush(connection_.get());
    if (!raised) return;
    lastRaise_ = std::chrono::steady_clock::now();
    settle_.setInterval(std::min<std::chrono::milliseconds>(settle_.intervalAsDuration() * 2, slowestAnswer));
}

// In front of the frontmost window that could cover it, but behind windows that must stay in front of it and are still
// higher.
bool FrontWindows::restack(const Kept& kept, std::vector<Layer>& layers) const {
    const auto own =
        std::find_if(layers.begin(), layers.end(), [&](const Layer& l) { return l.window == kept.window; });
    if (own == layers.end()) return false;
    auto cover = layers.end();
    auto limit = layers.end();
    for (auto layer = layers.end(); layer != layers.begin() && cover == layers.end();) {
        --layer;
        if (layer == own || !layer->seen || !intersect(layer->frame, own->frame)) continue;
        const Kept* other = find(layer->window);
        if (other != nullptr && other->rank == kept.rank) continue;
        (staysInFrontOf(*layer, kept.rank) ? limit : cover) = layer;
    }
    const bool limited = limit != layers.end();
    const bool behindCover = cover != layers.end() && own < cover;
    const bool beyondLimit = limited && limit < own;
    if (!behindCover && !beyondLimit) return false;
    const std::array<std::uint32_t, 2> values{limited ? limit->window : std::uint32_t{XCB_STACK_MODE_ABOVE},
                                              XCB_STACK_MODE_BELOW};
    xcb_configure_window(
        connection_.get(), kept.window,
        static_cast<std::uint16_t>(XCB_CONFIG_WINDOW_STACK_MODE | (limited ? XCB_CONFIG_WINDOW_SIBLING : 0)),
        values.data());
    if (beyondLimit) {
        std::rotate(limit, own, own + 1);
    } else {
        std::rotate(own, own + 1, limit);
    }
    return true;
}

std::optional<std::vector<FrontWindows::Layer>> FrontWindows::layers() const {
    xcb_connection_t* connection = connection_.get();
    const auto treeCookie = xcb_query_tree(connection, connection_.root());
    const X11Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection, treeCookie, nullptr));
    if (!tree) return std::nullopt;
    const xcb_window_t* windows = xcb_query_tree_children(tree.get());
    const auto count = static_cast<std::size_t>(xcb_query_tree_children_length(tree.get()));
    std::vector<std::pair<xcb_get_window_attributes_cookie_t, xcb_get_geometry_cookie_t>> cookies;
    cookies.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        cookies.emplace_back(xcb_get_window_attributes(connection, windows[i]),
                             xcb_get_geometry(connection, windows[i]));
    }
    std::vector<Layer> layers;
    for (std::size_t i = 0; i < count; ++i) {
        const X11Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(connection, cookies[i].first, nullptr));
        const X11Reply<xcb_get_geometry_reply_t> place(xcb_get_geometry_reply(connection, cookies[i].second, nullptr));
        if (!attributes || !place || attributes->map_state != XCB_MAP_STATE_VIEWABLE) continue;
        const int border = 2 * place->border_width;
        layers.push_back({windows[i],
                          {place->x, place->y, place->width + border, place->height + border},
                          attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT});
    }
    return layers;
}

const FrontWindows::Kept* FrontWindows::find(xcb_window_t window) const {
    const auto found =
        std::find_if(kept_.begin(), kept_.end(), [window](const auto& one) { return one->window == window; });
    return found != kept_.end() ? found->get() : nullptr;
}

// The leading bits of a window's number name its client.
bool FrontWindows::isOurs(xcb_window_t window) const {
    const xcb_setup_t* setup = xcb_get_setup(connection_.get());
    if (setup == nullptr) return false;
    const std::uint32_t client = ~setup->resource_id_mask;
    return std::any_of(kept_.begin(), kept_.end(),
                       [&](const auto& one) { return (one->window & client) == (window & client); });
}

bool FrontWindows::holdsOurs(xcb_window_t window) const {
    const auto cookie = xcb_query_tree(connection_.get(), window);
    const X11Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection_.get(), cookie, nullptr));
    if (!tree) return false;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    return std::any_of(children, children + xcb_query_tree_children_length(tree.get()),
                       [this](xcb_window_t child) { return isOurs(child); });
}

bool FrontWindows::staysInFrontOf(const Layer& layer, Rank rank) const {
    if (const Kept* other = find(layer.window)) return other->rank > rank;
    return isOurs(layer.window) || (rank == Rank::overlay && holdsOurs(layer.window));
}

}  // namespace vantrel::linuxdesktop
