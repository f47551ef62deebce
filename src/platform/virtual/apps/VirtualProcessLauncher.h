#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/apps/ProcessLauncher.h"
#include "platform/virtual/apps/InstalledApplication.h"
#include "platform/virtual/apps/VirtualProcess.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/system/VirtualFileManager.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// The processes, and what is installed. The client's own process is the first one.
class VirtualProcessLauncher final : public ProcessLauncher {
  public:
    VirtualProcessLauncher(Engine& engine, VirtualFileManager& files, VirtualDesktop& desktop, Activations& activations,
                           std::optional<std::string> ownIdentifier);

    std::variant<ProcessIdentifier, PlatformError> launch(std::string_view executablePath,
                                                          const std::vector<std::string>& arguments) override;
    bool sendSignal(ProcessIdentifier process, int signal) override;

    /// The lower level of launch(), as in the system: nothing is yielded to what is started.
    std::variant<ProcessIdentifier, PlatformError> launchTask(const std::string& path,
                                                              const std::vector<std::string>& arguments);
    /// The identifier of the bundle in that folder. Empty if there is none.
    std::optional<std::string> bundleIdentifier(const std::string& bundlePath) const;

    /// Driver-facing, any thread: installs an executable with this behaviour. An executable file at which nothing is
    /// installed starts a process that is no application.
    void install(const std::string& executablePath, InstalledApplication application);
    void install(const std::string& executablePath, ApplicationFactory factory);
    /// Removes its bundle. Processes already running from it continue.
    void uninstall(const std::string& executablePath);
    /// Starts fail with that error text. Empty: they work again.
    void failLaunches(std::optional<std::string> text);

    /// Starts it from outside the client, wherever it is.
    ProcessIdentifier start(const std::string& executablePath, const std::vector<std::string>& arguments = {});
    /// An application that runs at once, without having been started.
    ProcessIdentifier add(const ApplicationDescription& description);
    /// It ends by itself. False if it does not exist.
    bool exit(ProcessIdentifier process);
    /// It opens a window at once. Returns the window's number, or 0 if it does not run.
    std::int64_t openWindow(ProcessIdentifier process, const NewWindow& window);
    /// Opens for the address what a start of that executable would open.
    void openAddress(const std::shared_ptr<VirtualProcess>& process, const std::string& executablePath,
                     const std::string& address);

    /// Why the client cannot start it; empty when it can.
    std::optional<std::string> startFailure(const std::string& executablePath) const;
    bool isExecutable(std::string_view path) const { return files_.kind(path) == FileKind::executable; }
    /// Every process ever started, oldest first.
    std::vector<std::shared_ptr<VirtualProcess>> all() const;
    /// Null if there never was one.
    std::shared_ptr<VirtualProcess> find(ProcessIdentifier process) const;
    /// The oldest one that has not ended. Null if there is none.
    std::shared_ptr<VirtualProcess> running(std::string_view bundleIdentifier) const;
    /// The same, found by its executable.
    std::shared_ptr<VirtualProcess> runningFrom(const std::string& executablePath) const;
    ProcessIdentifier ownProcess() const { return all().front()->processIdentifier(); }

  private:
    std::shared_ptr<VirtualProcess> make(std::string path, std::vector<std::string> arguments,
                                         const ApplicationDescription& description);
    InstalledApplication installedAt(const std::string& path, const std::vector<std::string>& arguments) const;
    /// Who starts an application, or has it open something. The system brings it to the front for the participant; for
    /// the client it has to come by itself.
    enum class Starter { participant, client };

    ProcessIdentifier start(const std::string& executablePath, const std::vector<std::string>& arguments,
                            Starter starter);
    void live(const std::shared_ptr<VirtualProcess>& process, const InstalledApplication& installed, Starter starter);
    /// `notBefore` is in seconds from now.
    void openWindows(const std::shared_ptr<VirtualProcess>& process, const InstalledApplication& installed,
                     const std::string& address, double notBefore, Starter starter);
    void yieldTo(const std::string& executablePath);

    Engine& engine_;
    VirtualFileManager& files_;
    VirtualDesktop& desktop_;
    Activations& activations_;
    mutable std::mutex mutex_;
    std::map<std::string, ApplicationFactory, std::less<>> installed_;
    std::optional<std::string> failure_;
    std::vector<std::shared_ptr<VirtualProcess>> processes_;
    ProcessIdentifier next_ = 500;
};

}  // namespace vantrel::virtualmac
