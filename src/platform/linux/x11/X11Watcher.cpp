#include "platform/linux/x11/X11Watcher.h"

#include <xcb/randr.h>

#include <QObject>
#include <QSocketNotifier>
#include <algorithm>
#include <utility>

namespace vantrel::linuxdesktop {

struct X11Watcher::Observer {
    Change change;
    Block block;
    bool removed = false;
};

class X11Watcher::Removal final : public Observation {
  public:
    Removal(X11Watcher& watcher, std::shared_ptr<Observer> observer)
        : watcher_(watcher), observer_(std::move(observer)) {}

    ~Removal() override {
        observer_->removed = true;
        auto& all = watcher_.observers_;
        all.erase(std::remove(all.begin(), all.end(), observer_), all.end());
    }

  private:
    X11Watcher& watcher_;
    const std::shared_ptr<Observer> observer_;
};

std::unique_ptr<X11Watcher> X11Watcher::open() {
    auto connection = X11Connection::open();
    if (!connection) return nullptr;
    return std::unique_ptr<X11Watcher>(new X11Watcher(std::move(connection)));
}

X11Watcher::X11Watcher(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)),
      currentDesktop_(connection_->atom("_NET_CURRENT_DESKTOP")),
      clientList_(connection_->atom("_NET_CLIENT_LIST")),
      windowState_(connection_->atom("_NET_WM_STATE")) {
    select();
    notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_->get()), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { readEvents(); });
}

X11Watcher::~X11Watcher() = default;

void X11Watcher::select() {
    xcb_connection_t* connection = connection_->get();
    const std::uint32_t events =
        XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection, connection_->root(), XCB_CW_EVENT_MASK, &events);
    const auto* extension = xcb_get_extension_data(connection, &xcb_randr_id);
    if (extension != nullptr && extension->present != 0) {
        firstDisplayEvent_ = extension->first_event;
        xcb_randr_select_input(connection, connection_->root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    }
    xcb_flush(connection);
}

void X11Watcher::readEvents() {
    xcb_connection_t* connection = connection_->get();
    constexpr std::uint8_t sentByClient = 0x80;
    bool displays = false;
    bool stacking = false;
    int currentDesktops = 0;
    bool windows = false;
    bool pointer = false;
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
        const std::uint8_t type = event->response_type & ~sentByClient;
        if (firstDisplayEvent_ != 0 && (type == firstDisplayEvent_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                                        type == firstDisplayEvent_ + XCB_RANDR_NOTIFY)) {
            displays = true;
        } else if (type == XCB_CONFIGURE_NOTIFY) {
            const auto& configured = reinterpret_cast<const xcb_configure_notify_event_t&>(*event);
            (configured.window == connection_->root() ? displays : stacking) = true;
        } else if (type == XCB_MAP_NOTIFY || type == XCB_CIRCULATE_NOTIFY || type == XCB_REPARENT_NOTIFY) {
            stacking = true;
        } else if (type == XCB_PROPERTY_NOTIFY) {
            const xcb_atom_t changed = reinterpret_cast<const xcb_property_notify_event_t&>(*event).atom;
            if (changed == currentDesktop_) ++currentDesktops;
            windows = windows || changed == clientList_ || changed == windowState_;
        } else if (type == XCB_ENTER_NOTIFY) {
            pointer = true;
        }
    }
    if (xcb_connection_has_error(connection) != 0) notifier_->setEnabled(false);
    if (displays) tell(Change::displays);
    if (stacking) tell(Change::stacking);
    for (; currentDesktops > 0; --currentDesktops) tell(Change::currentDesktop);
    if (windows) tell(Change::windows);
    if (pointer) tell(Change::pointer);
}

// Sending may also read events, and then the socket that wakes the event loop stays silent. So look at what has
// arrived.
void X11Watcher::select(xcb_window_t window, std::uint32_t events) {
    xcb_change_window_attributes(connection_->get(), window, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection_->get());
    readEvents();
}

// Takes effect in an event of its own. Earlier changes of the window are reported too.
void X11Watcher::watch(xcb_window_t window) {
    const auto begin = [this, window] {
        select(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
        tell(Change::windows);
    };
    QMetaObject::invokeMethod(notifier_.get(), begin, Qt::QueuedConnection);
}

void X11Watcher::watchPointer(xcb_window_t window) {
    const auto begin = [this, window] { select(window, XCB_EVENT_MASK_ENTER_WINDOW); };
    QMetaObject::invokeMethod(notifier_.get(), begin, Qt::QueuedConnection);
}

std::unique_ptr<Observation> X11Watcher::observe(Change change, Block block) {
    auto observer = std::make_shared<Observer>(Observer{change, std::move(block)});
    observers_.push_back(observer);
    return std::make_unique<Removal>(*this, std::move(observer));
}

void X11Watcher::tell(Change change) {
    const auto told = observers_;
    for (const auto& observer : told) {
        if (observer->change == change && !observer->removed) observer->block();
    }
}

}  // namespace vantrel::linuxdesktop
