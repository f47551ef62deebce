#import <Foundation/Foundation.h>

#include <string>

#include "tests/macos/standins/foundation/Text.h"

@interface NSException ()
@property(readwrite, copy) NSExceptionName name;
@property(nullable, readwrite, copy) NSString* reason;
@end

@implementation NSException

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

extern "C" [[noreturn]] void vantrel_raise_unrecognized(const char* message) {
    vantrel::standins::raise(@"NSInvalidArgumentException",
                             vantrel::standins::textOf(std::string(message) + ": unrecognized selector"));
}

namespace vantrel::standins {

void raise(NSString* name, NSString* reason) {
    NSException* exception = [[NSException alloc] init];
    exception.name = name;
    exception.reason = reason;
    @throw exception;
}

}  // namespace vantrel::standins
