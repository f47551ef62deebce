#include "platform/macos/system/MacISO8601DateFormatter.h"

#import <Foundation/Foundation.h>

#include <cmath>

#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

// One formatter for each call: it is not documented as thread-safe.
std::string MacISO8601DateFormatter::string(double secondsSince1970) const {
    @autoreleasepool {
        NSDate* date = [NSDate dateWithTimeIntervalSince1970:std::floor(secondsSince1970)];
        return bytesOf([[[NSISO8601DateFormatter alloc] init] stringFromDate:date]);
    }
}

}  // namespace vantrel::macos
