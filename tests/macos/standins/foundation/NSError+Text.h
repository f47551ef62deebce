#pragma once

#import <Foundation/NSError.h>
#import <Foundation/NSString.h>

@interface NSError (VantrelText)
- (void)vantrel_setText:(nullable NSString*)text;
@end
