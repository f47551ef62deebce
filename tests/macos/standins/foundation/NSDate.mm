#import <Foundation/Foundation.h>

#include <chrono>
#include <cstdio>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Text.h"

using namespace vantrel::standins;

@implementation NSDate {
    double _seconds;
}

+ (instancetype)date {
    return [self dateWithTimeIntervalSince1970:mac().parts().clock.secondsSince1970()];
}

+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)seconds {
    NSDate* date = [[self alloc] init];
    date->_seconds = seconds;
    return date;
}

- (double)vantrel_seconds {
    return _seconds;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

@interface NSDate (VantrelSeconds)
- (double)vantrel_seconds;
@end

@implementation NSFormatter

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

/// The formatter's default options: a date, a time in seconds, Greenwich.
@implementation NSISO8601DateFormatter

- (instancetype)init {
    return [super init];
}

- (NSString*)stringFromDate:(NSDate*)date {
    using namespace std::chrono;
    const sys_seconds moment{seconds(static_cast<long long>([date vantrel_seconds]))};
    const sys_days day = floor<days>(moment);
    const year_month_day calendar(day);
    const hh_mm_ss clock(moment - day);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02ld:%02ld:%02ldZ", static_cast<int>(calendar.year()),
                  static_cast<unsigned>(calendar.month()), static_cast<unsigned>(calendar.day()),
                  static_cast<long>(clock.hours().count()), static_cast<long>(clock.minutes().count()),
                  static_cast<long>(clock.seconds().count()));
    return textOf(text);
}

@end
