#include "platform/linux/desktop/LinuxSpaces.h"

#include <utility>

#include "platform/linux/threads/MainThread.h"
#include "platform/linux/x11/X11Watcher.h"
#include "platform/threads/DispatchQueue.h"

namespace vantrel::linuxdesktop {

struct LinuxSpaces::Observer {
    Block block;
};

class LinuxSpaces::Removal final : public Observation {
  public:
    explicit Removal(std::shared_ptr<Observer> observer) : observer_(std::move(observer)) {}

  private:
    const std::shared_ptr<Observer> observer_;
};

LinuxSpaces::LinuxSpaces(X11Watcher& watcher, DispatchQueue& mainQueue) : mainQueue_(mainQueue) {
    notices_ = watcher.observe(X11Watcher::Change::currentDesktop, [this] { tell(); });
}

LinuxSpaces::~LinuxSpaces() = default;

std::unique_ptr<Observation> LinuxSpaces::observeActiveSpaceDidChange(Block block) {
    MainThread::require("observeActiveSpaceDidChange");
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
    auto observer = std::make_shared<Observer>(Observer{std::move(block)});
    observers_.push_back(observer);
    return std::make_unique<Removal>(std::move(observer));
}

// The number itself is ignored: when a notification arrives, it may already be that of the next change.
void LinuxSpaces::tell() {
    for (const auto& weak : observers_) {
        mainQueue_.async([weak] {
            if (const auto observer = weak.lock()) observer->block();
        });
    }
}

}  // namespace vantrel::linuxdesktop
