#include "platform/linux/apps/LinuxProcessLauncher.h"

#include <signal.h>

#include <algorithm>
#include <cerrno>

#include "platform/linux/apps/LaunchErrorText.h"
#include "platform/linux/apps/ReapedProcess.h"
#include "platform/linux/apps/StartedBundles.h"
#include "platform/linux/system/InstalledBrowsers.h"
#include "platform/portable/UTF8Validity.h"

namespace vantrel::linuxdesktop {

namespace {

std::string programAt(const std::string& executable) {
    const auto installed = installedBrowser(executable);
    return installed && installed->executable == executable ? installed->program : executable;
}

}  // namespace

std::variant<ProcessIdentifier, PlatformError> LinuxProcessLauncher::launch(std::string_view executablePath,
                                                                            const std::vector<std::string>& arguments) {
    const std::string executable(executablePath);
    if (!std::all_of(arguments.begin(), arguments.end(), isValidUTF8)) {
        return PlatformError{launchErrorText(executable, EINVAL)};
    }
    const std::string program = programAt(executable);
    std::vector<std::string> all{program};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const StartedProcess started = startReaped(program, all, ExecutableLookup::asItStands);
    if (started.error != 0) return PlatformError{launchErrorText(program, started.error)};
    started_.note(started.process, executable);
    return ProcessIdentifier{started.process};
}

bool LinuxProcessLauncher::sendSignal(ProcessIdentifier process, int signal) {
    return process > 0 && kill(process, signal) == 0;
}

}  // namespace vantrel::linuxdesktop
