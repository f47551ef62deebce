#pragma once

#include <map>
#include <string>

namespace vantrel::standins {

/// Compares the living Objective-C and CoreFoundation objects and copied blocks, without singletons, with those that
/// lived when it was created. Any thread, while no other one creates objects.
class ObjectCensus {
  public:
    ObjectCensus();

    /// A line for each class that has more or fewer, such as "+2 NSTimer". Objects that were autoreleased without a
    /// pool count as a line too. Empty if there is no difference.
    std::string difference() const;

  private:
    std::map<std::string, long> living_;
    long strays_;
};

}  // namespace vantrel::standins
