#pragma once

#import <Foundation/Foundation.h>

extern "C" const char* _Nonnull sel_getName(SEL _Nonnull selector);

namespace vantrel::standins {

/// sendAction:to:from:. Does nothing without a target or an action.
void sendAction(SEL _Nullable action, id _Nullable target, id _Nonnull sender);

}  // namespace vantrel::standins
