#include "tests/virtual/MacTest.h"

#include <cstdlib>
#include <string_view>

namespace vantrel::virtualmac {

bool isFreeRunning() {
    const char* value = std::getenv("VANTREL_FREE_RUNNING");
    return value != nullptr && std::string_view(value) == "1";
}

Options optionsFromEnvironment() {
    Options options;
    if (const char* seed = std::getenv("VANTREL_SEED")) options.seed = std::strtoull(seed, nullptr, 10);
    if (const char* version = std::getenv("VANTREL_SYSTEM")) options.systemVersion = std::atoi(version);
    options.freeRunning = isFreeRunning();
    return options;
}

MacTest::MacTest(Options options) {
    options.onEvent = [this](const Event& event) {
        const std::lock_guard guard(mutex_);
        events_.push_back(event);
    };
    options.onMisuse = [this](const std::string& what) {
        const std::lock_guard guard(mutex_);
        if (expectingMisuse_) {
            misuse_.push_back(what);
        } else {
            ADD_FAILURE() << "misuse of the platform: " << what;
        }
    };
    mac_ = std::make_unique<VirtualMac>(std::move(options));
    pointer_ = mac_.get();
}

MacTest::~MacTest() = default;

void MacTest::TearDown() {
    if (mac_ && !kept_.empty()) dropOnMain();
    mac_.reset();
}

std::vector<Event> MacTest::events() const {
    const std::lock_guard guard(mutex_);
    return events_;
}

std::vector<Event> MacTest::events(const EventKind& kind) const {
    std::vector<Event> found = events();
    std::erase_if(found, [&kind](const Event& event) { return event.kind != kind; });
    return found;
}

std::vector<std::string> MacTest::texts(const EventKind& kind) const {
    std::vector<std::string> found;
    for (auto& event : events(kind)) found.push_back(std::move(event.text));
    return found;
}

Happenings MacTest::transcript() const {
    const auto all = events();
    return {all.begin(), all.end()};
}

void MacTest::forgetEvents() {
    const std::lock_guard guard(mutex_);
    events_.clear();
}

void MacTest::expectMisuse() {
    const std::lock_guard guard(mutex_);
    expectingMisuse_ = true;
}

std::vector<std::string> MacTest::expectedMisuse() const {
    const std::lock_guard guard(mutex_);
    return misuse_;
}

void MacTest::dropOnMain() {
    // Under an alert or a menu the main thread still handles events. Once the process is over, nothing runs there, and
    // the Mac drops the objects itself.
    auto kept = std::make_shared<std::vector<std::shared_ptr<void>>>(std::move(kept_));
    kept_.clear();
    mac().postToMain([kept] {
        while (!kept->empty()) kept->pop_back();
    });
    kept.reset();
    mac().runFor(0);
}

}  // namespace vantrel::virtualmac
