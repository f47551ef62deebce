#pragma once

#import <Foundation/Foundation.h>

#include <string_view>

namespace vantrel::macos {

/// URLWithString:, but nothing is percent-encoded. Nil if the text is not a URL already. Any thread.
NSURL* _Nullable formedURL(std::string_view text);

/// The system's error for an address that is not a URL.
NSError* _Nonnull badURLError();

}  // namespace vantrel::macos
