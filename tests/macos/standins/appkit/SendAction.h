#pragma once

#import <Foundation/Foundation.h>

extern "C" const char* _Nonnull sel_getName(SEL _Nonnull selector);

namespace vantrel::standins {

/// sendAction:to:from:. Does nothing without a target or an action. Keeps neither of them.
void sendAction(SEL _Nullable action, __unsafe_unretained id _Nullable target, __unsafe_unretained id _Nonnull sender);

}  // namespace vantrel::standins
