#include "platform/linux/desktop/LinuxScreens.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/linux/threads/MainThread.h"
#include "platform/threads/DispatchQueue.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr int quietMilliseconds = 250;
constexpr X11Rectangle anyFrame{0, 0, 1440, 900};

Screen toScreen(const X11Monitor& monitor, const X11Monitor& primary) {
    const X11Rectangle& frame = monitor.frame;
    const double x = frame.x - primary.frame.x;
    const double y = primary.frame.y + primary.frame.height - (frame.y + frame.height);
    return {monitor.name, {{x, y}, {static_cast<double>(frame.width), static_cast<double>(frame.height)}}};
}

}  // namespace

struct LinuxScreens::Observer {
    Block block;
};

class LinuxScreens::Removal final : public Observation {
  public:
    explicit Removal(std::shared_ptr<Observer> observer) : observer_(std::move(observer)) {}

  private:
    const std::shared_ptr<Observer> observer_;
};

LinuxScreens::LinuxScreens(X11Connection& connection, X11Windows& windows, X11Watcher& watcher,
                           DispatchQueue& mainQueue)
    : monitors_(connection), windows_(windows), mainQueue_(mainQueue), lastTold_(monitors_.all()) {
    quiet_.setSingleShot(true);
    quiet_.setInterval(quietMilliseconds);
    QObject::connect(&quiet_, &QTimer::timeout, [this] { burstEnded(); });
    notices_ = watcher.observe(X11Watcher::Change::displays, [this] { quiet_.start(); });
}

LinuxScreens::~LinuxScreens() = default;

std::vector<Screen> LinuxScreens::screens() const {
    MainThread::require("screens");
    const auto all = monitors_.all();
    std::vector<Screen> screens;
    screens.reserve(all.size());
    for (const X11Monitor& monitor : all) screens.push_back(toScreen(monitor, all.front()));
    return screens;
}

std::optional<Screen> LinuxScreens::mainScreen() const {
    MainThread::require("mainScreen");
    const auto found = mainAndPrimary();
    if (!found) return std::nullopt;
    return toScreen(found->first, found->second);
}

std::optional<std::pair<X11Monitor, X11Monitor>> LinuxScreens::mainAndPrimary() const {
    const auto asked = monitors_.ask();
    const auto active = windows_.activeWindow();
    const auto all = monitors_.all(asked);
    if (all.empty()) return std::nullopt;
    const auto main = active ? X11Monitors::holding(all, active->frame) : std::nullopt;
    return std::pair(main.value_or(all.front()), all.front());
}

X11Rectangle LinuxScreens::mainFrame() const {
    const auto found = mainAndPrimary();
    return found ? found->first.frame : anyFrame;
}

X11Rectangle LinuxScreens::primaryFrame() const {
    const auto all = monitors_.all();
    return all.empty() ? anyFrame : all.front().frame;
}

bool LinuxScreens::isBorderedFromAbove() const {
    const auto all = monitors_.all();
    return std::any_of(all.begin(), all.end(), [&all](const X11Monitor& monitor) {
        const X11Rectangle& frame = monitor.frame;
        const X11Rectangle& primary = all.front().frame;
        return frame.y < primary.y && frame.y + frame.height >= primary.y && frame.x < primary.x + primary.width &&
               primary.x < frame.x + frame.width;
    });
}

X11Rectangle LinuxScreens::toPixels(const Rect& frame) const {
    const X11Rectangle primary = primaryFrame();
    const int height = static_cast<int>(std::lround(frame.size.height));
    return {primary.x + static_cast<int>(std::lround(frame.origin.x)),
            primary.y + primary.height - static_cast<int>(std::lround(frame.origin.y)) - height,
            static_cast<int>(std::lround(frame.size.width)), height};
}

std::unique_ptr<Observation> LinuxScreens::observeScreenParametersDidChange(Block block) {
    MainThread::require("observeScreenParametersDidChange");
    auto observer = std::make_shared<Observer>(Observer{std::move(block)});
    observers_.push_back(observer);
    return std::make_unique<Removal>(std::move(observer));
}

void LinuxScreens::burstEnded() {
    auto now = monitors_.all();
    if (now == lastTold_) return;
    lastTold_ = std::move(now);
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
    for (const auto& weak : observers_) {
        mainQueue_.async([weak] {
            if (const auto observer = weak.lock()) observer->block();
        });
    }
}

}  // namespace vantrel::linuxdesktop
