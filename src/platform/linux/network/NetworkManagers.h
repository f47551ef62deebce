#pragma once

#include <QThread>
#include <memory>

class QNetworkAccessManager;

namespace vantrel::linuxdesktop {

/// Makes Qt's network managers and lets them go. The end of a manager waits, for seconds if need be, for the thread
/// that it speaks HTTP on, which may be busy with a server that never comes to an end; so it has a thread of its own.
/// Must outlive the managers.
class NetworkManagers {
  public:
    NetworkManagers();
    ~NetworkManagers();

    /// A manager for the calling thread, to be let go on the same one.
    std::shared_ptr<QNetworkAccessManager> make();

  private:
    QThread endings_;
};

}  // namespace vantrel::linuxdesktop
