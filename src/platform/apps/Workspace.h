#pragma once

#include "platform/network/URLs.h"

namespace vantrel {

/// NSWorkspace, opening of addresses. Main thread.
class Workspace {
  public:
    virtual ~Workspace() = default;

    /// openURL: with the default application for it. False when nothing opens it.
    virtual bool open(const URL& url) = 0;
};

}  // namespace vantrel
