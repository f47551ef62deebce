// The program's surroundings in the system: settings, files, its bundle, its process.
#import <Foundation/Foundation.h>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Singletons.h"

using namespace vantrel::standins;

@implementation NSUserDefaults

+ (NSUserDefaults*)standardUserDefaults {
    static NSUserDefaults* const defaults = singleton([[NSUserDefaults alloc] init]);
    return defaults;
}

- (id)objectForKey:(NSString*)key {
    const auto value = mac().parts().userDefaults.string(bytesOf(key));
    return value ? textOf(*value) : nil;
}

- (void)setObject:(id)value forKey:(NSString*)key {
    if (![value isKindOfClass:[NSString class]]) {
        vantrel::standins::raise(@"NSInvalidArgumentException", @"a setting that is not stood in for");
    }
    mac().parts().userDefaults.set(bytesOf(key), bytesOf(value));
}

- (NSString*)stringForKey:(NSString*)key {
    return [self objectForKey:key];
}

@end

@implementation NSFileManager

+ (NSFileManager*)defaultManager {
    static NSFileManager* const manager = singleton([[NSFileManager alloc] init]);
    return manager;
}

// For the kernel the path ends at a zero byte.
- (BOOL)fileExistsAtPath:(NSString*)path {
    return mac().parts().files.fileExists(bytesOf(path).c_str());
}

@end

NSString* NSHomeDirectory() {
    return textOf(mac().parts().files.homeDirectory());
}

@implementation NSBundle {
    // Nil for the main bundle.
    NSString* _path;
}

+ (instancetype)bundleWithPath:(NSString*)path {
    if (!mac().processes().bundleIdentifier(bytesOf(path))) return nil;
    NSBundle* bundle = [[NSBundle alloc] init];
    bundle->_path = path;
    return bundle;
}

+ (NSBundle*)mainBundle {
    static NSBundle* const bundle = singleton([[NSBundle alloc] init]);
    return bundle;
}

- (NSString*)bundleIdentifier {
    const auto identifier =
        _path == nil ? mac().parts().mainBundle.identifier() : mac().processes().bundleIdentifier(bytesOf(_path));
    return identifier ? textOf(*identifier) : nil;
}

@end

@interface VantrelActivity : NSObject
@end

@implementation VantrelActivity
@end

@implementation NSProcessInfo

+ (NSProcessInfo*)processInfo {
    static NSProcessInfo* const info = singleton([[NSProcessInfo alloc] init]);
    return info;
}

- (int)processIdentifier {
    return mac().processes().ownProcess();
}

// The token is the activity, and ends with it: an adapter that does not keep it has none. The census counts it.
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason {
    (void)options;
    if (reason.length == 0) vantrel::standins::raise(@"NSInvalidArgumentException", @"an activity without a reason");
    return [[VantrelActivity alloc] init];
}

- (void)endActivity:(id<NSObject>)activity {
    if (![activity isKindOfClass:[VantrelActivity class]]) {
        vantrel::standins::raise(@"NSInvalidArgumentException", @"not an activity");
    }
}

@end
