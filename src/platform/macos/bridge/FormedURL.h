#pragma once

#import <Foundation/Foundation.h>

#include <string_view>

namespace vantrel::macos {

/// URLWithString: without its help: nothing is percent-encoded on the way. Nil when the text is not a URL as it stands.
/// Any thread.
NSURL* _Nullable formedURL(std::string_view text);

/// The system's text for an address that is no URL.
NSError* _Nonnull badURLError();

}  // namespace vantrel::macos
