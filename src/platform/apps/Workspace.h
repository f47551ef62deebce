#pragma once

#include "platform/network/URLs.h"

namespace vantrel {

/// Opens addresses (NSWorkspace). Main thread.
class Workspace {
  public:
    virtual ~Workspace() = default;

    /// openURL: with the URL's default application. False if nothing opens it, such as an address without a scheme.
    virtual bool open(const URL& url) = 0;
};

}  // namespace vantrel
