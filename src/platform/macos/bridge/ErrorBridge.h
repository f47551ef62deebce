#pragma once

#import <Foundation/Foundation.h>

#include "platform/system/PlatformError.h"

namespace vantrel::macos {

/// The error with its text. Nil, or an error without a text, gets the system's text for an unknown one. Any thread.
PlatformError platformError(NSError* _Nullable error);

/// The exception's reason, or else its name.
PlatformError platformError(NSException* _Nonnull exception);

}  // namespace vantrel::macos
