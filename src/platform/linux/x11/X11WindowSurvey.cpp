#include "platform/linux/x11/X11WindowSurvey.h"

#include <utility>

namespace vantrel::linuxdesktop {

std::vector<X11WindowFacts> X11WindowSurvey::look(std::optional<ProcessIdentifier> process) {
    const auto about = process ? WindowInquiry::About::layer : WindowInquiry::About::look;
    const auto isWanted = [process](ProcessIdentifier owner) { return !process || owner == *process; };
    AskedProperty list = windows_.askFrontToBack();
    std::vector<xcb_window_t> expected;
    std::vector<xcb_window_t> expectedWanted;
    for (const auto& [window, owner] : lastOwners()) {
        expected.push_back(window);
        if (isWanted(owner)) expectedWanted.push_back(window);
    }
    auto inquiries = inquire(expectedWanted, about);
    const auto expectedOwners = windows_.askOwners(expected);
    const std::vector<xcb_window_t> windows = windows_.frontToBack(list);
    Found found;
    answer(std::move(inquiries), found);
    Owners owners;
    answer(expectedOwners, owners);

    std::vector<xcb_window_t> others;
    for (const xcb_window_t window : windows) {
        if (owners.count(window) == 0) others.push_back(window);
    }
    answer(windows_.askOwners(others), owners);
    remember(windows, owners);
    others.clear();
    for (const xcb_window_t window : windows) {
        if (isWanted(owners[window]) && found.count(window) == 0) others.push_back(window);
    }
    answer(inquire(others, about), found);

    std::vector<X11WindowFacts> all;
    for (const xcb_window_t window : windows) {
        auto& facts = found[window];
        if (!facts || !isWanted(owners[window])) continue;
        facts->owner = owners[window];
        all.push_back(*facts);
    }
    return all;
}

std::vector<WindowInquiry> X11WindowSurvey::inquire(const std::vector<xcb_window_t>& windows,
                                                    WindowInquiry::About about) {
    std::vector<WindowInquiry> inquiries;
    inquiries.reserve(windows.size());
    for (const xcb_window_t window : windows) inquiries.emplace_back(connection_, atoms_, window, about);
    return inquiries;
}

void X11WindowSurvey::answer(std::vector<WindowInquiry> inquiries, Found& found) {
    for (WindowInquiry& inquiry : inquiries) found[inquiry.window()] = inquiry.answer();
}

void X11WindowSurvey::answer(const X11Windows::AskedOwners& asked, Owners& owners) {
    const std::vector<ProcessIdentifier> processes = windows_.owners(asked);
    for (std::size_t i = 0; i < processes.size(); ++i) owners[asked.windows[i]] = processes[i];
}

X11WindowSurvey::Owners X11WindowSurvey::lastOwners() const {
    const std::lock_guard lock(mutex_);
    return lastOwners_;
}

void X11WindowSurvey::remember(const std::vector<xcb_window_t>& windows, const Owners& owners) {
    const std::lock_guard lock(mutex_);
    lastOwners_.clear();
    for (const xcb_window_t window : windows) lastOwners_.emplace(window, owners.at(window));
}

std::optional<X11WindowFacts> X11WindowSurvey::of(xcb_window_t window, WindowInquiry::About about) {
    auto inquiries = inquire({window}, about);
    const auto owner = windows_.owners({window}).front();
    auto facts = inquiries.front().answer();
    if (facts) facts->owner = owner;
    return facts;
}

std::optional<std::vector<X11WindowFacts>> X11WindowSurvey::frontToBack() {
    auto all = look(std::nullopt);
    if (!connection_.isAlive()) return std::nullopt;
    return all;
}

std::vector<xcb_window_t> X11WindowSurvey::ofProcess(ProcessIdentifier process) {
    std::vector<xcb_window_t> found;
    for (const X11WindowFacts& facts : look(process)) {
        if (facts.layer == X11WindowFacts::ordinaryLayer) found.push_back(facts.window);
    }
    return found;
}

}  // namespace vantrel::linuxdesktop
