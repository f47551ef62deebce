#pragma once

#include "platform/apps/ProcessLauncher.h"

namespace vantrel::contracts {

/// A computer under test that can stop an application, as a person's signal or a fault would. Test thread.
class StoppingHost {
  public:
    virtual ~StoppingHost() = default;

    /// From now on, to its end, the application of the tests runs and answers nothing.
    virtual void stop(ProcessIdentifier peer) = 0;
};

}  // namespace vantrel::contracts
