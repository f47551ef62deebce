#include "tests/linux/support/PeerBundle.h"

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "platform/linux/apps/ProcessTable.h"
#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {

PeerBundle::PeerBundle(const std::filesystem::path& parent) : folder_(parent / "Google Chrome.app") {
    copyCalled("Google Chrome");
}

std::filesystem::path PeerBundle::copyCalled(const std::string& name) {
    const auto executable = folder_.parent_path() / (name + ".app") / "Contents/MacOS" / name;
    std::filesystem::create_directories(executable.parent_path());
    std::filesystem::copy_file(VANTREL_PEER, executable);
    executables_.push_back(executable);
    return executable;
}

std::optional<std::vector<std::string>> PeerBundle::argumentsReceived(ProcessIdentifier peer) const {
    const std::filesystem::path file = executable().parent_path() / ("arguments-" + std::to_string(peer));
    if (!std::filesystem::exists(file)) return std::nullopt;
    const std::string text = contentsOf(file);
    std::vector<std::string> arguments;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = text.find('\0', from);
        arguments.push_back(text.substr(from, end - from));
        from = end + 1;
    }
    return arguments;
}

void PeerBundle::endAll() const {
    for (const ProcessEntry& entry : ProcessTable::all()) {
        if (std::find(executables_.begin(), executables_.end(), entry.executablePath) == executables_.end()) continue;
        kill(entry.process, SIGKILL);
        for (int waited = 0; waited < 1000 && ProcessTable::startTime(entry.process) == entry.startTime; ++waited) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
}

}  // namespace vantrel::linuxdesktop
