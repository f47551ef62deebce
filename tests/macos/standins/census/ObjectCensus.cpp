#include "tests/macos/standins/census/ObjectCensus.h"

#include "tests/macos/standins/runtime/AutoreleasePools.h"
#include "tests/macos/standins/runtime/Objects.h"

namespace vantrel::standins {

ObjectCensus::ObjectCensus() : living_(livingObjects()), strays_(autoreleasedWithoutPool()) {}

std::string ObjectCensus::difference() const {
    std::map<std::string, long> changes = livingObjects();
    for (const auto& [name, count] : living_) changes[name] -= count;
    changes["autoreleased without a pool"] = autoreleasedWithoutPool() - strays_;
    std::string text;
    for (const auto& [name, change] : changes) {
        if (change != 0) text += (change > 0 ? "+" : "") + std::to_string(change) + " " + name + "\n";
    }
    return text;
}

}  // namespace vantrel::standins
