#pragma once

#include <string>
#include <vector>

namespace vantrel::contracts {

/// A computer under test that tells which addresses it has opened with their default application. Test thread.
class WorkspaceHost {
  public:
    virtual ~WorkspaceHost() = default;

    /// From now on, and before the first address is opened: no application opens any address.
    virtual void haveNoOpener() = 0;
    /// The addresses opened so far, in order.
    virtual std::vector<std::string> addressesOpened() = 0;
};

}  // namespace vantrel::contracts
