#pragma once

#include <functional>
#include <memory>
#include <variant>
#include <vector>

#include "platform/apps/RunningApplications.h"
#include "platform/network/URLs.h"
#include "platform/system/PlatformError.h"

namespace vantrel {

/// Opens addresses with an application of the caller's choice (NSWorkspace). Any thread.
class ApplicationOpener {
  public:
    virtual ~ApplicationOpener() = default;

    /// A success may come without an application (null).
    using Result = std::variant<std::shared_ptr<RunningApplication>, PlatformError>;
    using Completion = std::function<void(Result)>;

    /// openURLs:withApplicationAtURL:configuration:completionHandler:. Returns at once; the handler is called once, on
    /// any thread.
    virtual void open(const std::vector<URL>& urls, const URL& application, bool activates, Completion completion) = 0;
};

}  // namespace vantrel
