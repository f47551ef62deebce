#pragma once

#include <string>

#include "platform/apps/Workspace.h"
#include "platform/network/URLs.h"
#include "platform/ui/Alerts.h"
#include "server/VersionCheck.h"

namespace vantrel {

/// The alerts that lead to a newer client. Main thread; each call returns after the alert has been dismissed.
class UpdatePrompts {
  public:
    UpdatePrompts(Alerts& alerts, const URLs& urls, Workspace& workspace)
        : alerts_(alerts), urls_(urls), workspace_(workspace) {}

    /// Recommends a newer version or announces a mandatory one, depending on the severity. "info" shows nothing.
    void showUpdate(const UpdateOffer& offer, const std::string& clientVersion);

    /// Shown after a join that was refused because the client is too old. Without an address it offers no download.
    void showRequiredUpdate(const std::string& message, const std::string& downloadUrl);

  private:
    /// Opens the page in the default browser. Ignores an address that is empty or not a URL.
    void openDownloadPage(const std::string& downloadUrl);

    Alerts& alerts_;
    const URLs& urls_;
    Workspace& workspace_;
};

}  // namespace vantrel
