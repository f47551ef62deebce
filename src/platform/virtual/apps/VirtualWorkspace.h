#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

#include "platform/apps/Workspace.h"
#include "platform/portable/URLComponents.h"
#include "platform/portable/URLGrammar.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// "Opens" addresses by recording them.
class VirtualWorkspace final : public Workspace {
  public:
    explicit VirtualWorkspace(Engine& engine) : engine_(engine) {}

    bool open(const URL& url) override {
        if (engine_.isOver() || !isURIReference(url.absoluteString)) return false;
        const bool opened = !failing_ && scheme(url);
        if (opened) {
            const std::lock_guard guard(mutex_);
            opened_.push_back(url.absoluteString);
        }
        engine_.journal.emit({ClientEvent::urlOpened, url.absoluteString, {{Field::opened, opened ? "yes" : "no"}}});
        return opened;
    }

    /// Driver-facing, any thread: from now on opening fails.
    void setFailing(bool failing) { failing_ = failing; }
    std::vector<std::string> opened() const {
        const std::lock_guard guard(mutex_);
        return opened_;
    }

  private:
    Engine& engine_;
    std::atomic<bool> failing_ = false;
    mutable std::mutex mutex_;
    std::vector<std::string> opened_;
};

}  // namespace vantrel::virtualmac
