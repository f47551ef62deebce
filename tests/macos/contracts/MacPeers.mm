#include "tests/macos/contracts/MacPeers.h"

#import <AppKit/AppKit.h>

#include <chrono>
#include <fstream>
#include <sstream>
#include <thread>

#include "platform/macos/apps/MacRunningApplications.h"
#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

namespace {

NSArray<NSRunningApplication*>* running() {
    return [NSRunningApplication runningApplicationsWithBundleIdentifier:@"com.google.Chrome"];
}

bool isPeer(NSRunningApplication* application, const std::filesystem::path& executable) {
    const std::filesystem::path path = bytesOf(application.executableURL.path);
    std::error_code differentOrGone;
    return std::filesystem::equivalent(path, executable, differentOrGone);
}

}  // namespace

MacPeers::MacPeers() : bundle_(std::filesystem::path(VANTREL_PEER_BUNDLE)) {}

std::filesystem::path MacPeers::executable() const {
    return bundle_ / "Contents/MacOS/Google Chrome";
}

bool MacPeers::realOneRuns() {
    @autoreleasepool {
        for (NSRunningApplication* application in running()) {
            if (!isPeer(application, MacPeers().executable())) return true;
        }
        return false;
    }
}

std::optional<std::vector<std::string>> MacPeers::argumentsReceived(ProcessIdentifier peer) const {
    const std::filesystem::path file = bundle_.parent_path() / ("arguments-" + std::to_string(peer));
    if (!std::filesystem::exists(file)) return std::nullopt;
    std::ifstream stream(file);
    std::vector<std::string> arguments;
    for (std::string argument; std::getline(stream, argument, '\0');) arguments.push_back(argument);
    return arguments;
}

std::filesystem::path MacPeers::keyFile(ProcessIdentifier peer) const {
    return bundle_.parent_path() / ("keys-" + std::to_string(peer));
}

bool MacPeers::recordsKeys(ProcessIdentifier peer) const {
    return std::filesystem::exists(keyFile(peer));
}

std::vector<std::int64_t> MacPeers::keysReceived(ProcessIdentifier peer) const {
    std::ifstream stream(keyFile(peer));
    std::vector<std::int64_t> codes;
    // A line that is still being written has no line break yet.
    for (std::string line; std::getline(stream, line) && !stream.eof();) codes.push_back(std::stoll(line));
    return codes;
}

void MacPeers::endAll() const {
    @autoreleasepool {
        for (NSRunningApplication* application in running()) {
            if (!isPeer(application, executable())) continue;
            const ProcessIdentifier process = application.processIdentifier;
            const auto startTime = KernelProcess::startTime(process);
            [application forceTerminate];
            for (int waited = 0; waited < 1000 && startTime && KernelProcess::startTime(process) == startTime;
                 ++waited) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        }
    }
    // Process identifiers are reused.
    for (const auto& entry : std::filesystem::directory_iterator(bundle_.parent_path())) {
        const std::string name = entry.path().filename();
        if (name.starts_with("arguments-") || name.starts_with("keys-")) std::filesystem::remove(entry.path());
    }
}

}  // namespace vantrel::macos
