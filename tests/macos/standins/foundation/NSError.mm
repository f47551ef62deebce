#import <Foundation/Foundation.h>

#include <string>

#include "tests/macos/standins/foundation/NSError+Text.h"
#include "tests/macos/standins/foundation/Text.h"

NSErrorDomain const NSURLErrorDomain = @"NSURLErrorDomain";

@implementation NSError {
    NSString* _text;
}

@synthesize code = _code;

+ (instancetype)errorWithDomain:(NSErrorDomain)domain code:(NSInteger)code userInfo:(NSDictionary*)userInfo {
    (void)userInfo;
    if (domain == nil) vantrel::standins::raise(@"NSInvalidArgumentException", @"an error without a domain");
    NSError* error = [[self alloc] init];
    error->_code = code;
    error->_text = vantrel::standins::textOf("Impossibile completare l’operazione. (Errore " +
                                             vantrel::standins::bytesOf(domain) + " " + std::to_string(code) + ".)");
    return error;
}

- (NSString*)localizedDescription {
    return _text;
}

- (void)vantrel_setText:(NSString*)text {
    _text = text;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end
