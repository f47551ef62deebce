#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace vantrel::macos {

/// Nil if the bytes are not valid UTF-8. Any thread.
NSString* _Nullable strictText(std::string_view bytes);

/// Never nil: bytes that are not UTF-8 become U+FFFD. Any thread.
NSString* _Nonnull lenientText(std::string_view bytes);

/// UTF-8; empty for nil. Half a surrogate pair becomes a question mark. Any thread.
std::string bytesOf(NSString* _Nullable text);

/// An empty optional for nil, and for anything that is not a string.
std::optional<std::string> bytesOfAny(id _Nullable object);

}  // namespace vantrel::macos
