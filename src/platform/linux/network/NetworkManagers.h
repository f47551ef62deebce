#pragma once

#include <QThread>
#include <memory>

class QNetworkAccessManager;

namespace vantrel::linuxdesktop {

/// Creates Qt's network managers and destroys them. Destroying a manager waits for its HTTP thread, for seconds if that
/// is busy with a server that never finishes. So managers are destroyed on a thread of their own. Must outlive the
/// managers.
class NetworkManagers {
  public:
    NetworkManagers();
    ~NetworkManagers();

    /// A manager for the calling thread. Release it on the same thread.
    std::shared_ptr<QNetworkAccessManager> make();

  private:
    QThread endings_;
};

}  // namespace vantrel::linuxdesktop
