#include "tests/macos/standins/MacInUse.h"

#include <atomic>
#include <string>
#include <utility>

#include "tests/macos/standins/appkit/OwnApplication.h"
#include "tests/macos/standins/foundation/Observers.h"
#include "tests/macos/standins/runtime/Classes.h"

namespace vantrel::standins {

namespace {

std::atomic<virtualmac::VirtualMac*> inUse = nullptr;
std::atomic<long> turns = 0;

}  // namespace

MacInUse::MacInUse(virtualmac::VirtualMac& mac) {
    if (inUse.exchange(&mac) != nullptr) fatal("two Macs at a time");
    mac.accessibility().setMessagingTimeout(0);
}

MacInUse::~MacInUse() {
    forgetObservers();
    forgetOwnApplication();
    inUse = nullptr;
}

virtualmac::VirtualMac& mac() {
    virtualmac::VirtualMac* const found = inUse;
    if (found == nullptr) fatal("a call without a Mac");
    return *found;
}

bool isMacInUse() {
    return inUse != nullptr;
}

void requireMain(const char* call) {
    if (!mac().engine().isMainThread()) fatal(std::string(call) + " off the main thread");
}

bool systemIsAtLeast(int version) {
    return mac().systemVersion() >= version;
}

bool processGoesOn() {
    const virtualmac::VirtualMac* const found = inUse;
    return found != nullptr && found->isRunning();
}

Block withPool(Block block) {
    return [block = std::move(block)]() mutable {
        if (mac().engine().isMainThread()) ++turns;
        @autoreleasepool {
            block();
            block = nullptr;
        }
    };
}

long turnsOfTheMainLoop() {
    return turns;
}

}  // namespace vantrel::standins
