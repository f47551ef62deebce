#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace vantrel::standins {

/// Nil if the bytes are not valid UTF-8. Any thread.
NSString* _Nullable textOf(std::string_view bytes);

/// UTF-8, empty for nil. Half a surrogate pair becomes a question mark.
std::string bytesOf(NSString* _Nullable text);

/// UTF-16 of valid UTF-8: shortest forms only, no surrogates, nothing above U+10FFFF.
std::optional<std::u16string> utf16(std::string_view bytes);

/// Empty for half a surrogate pair, unless it may become a question mark.
std::optional<std::string> utf8(std::u16string_view units, bool isLossy);

/// Throws an exception, as Foundation does for what its documentation forbids.
[[noreturn]] void raise(NSString* _Nonnull name, NSString* _Nullable reason);

/// An error with the system's text.
NSError* _Nonnull errorOf(NSString* _Nonnull domain, NSInteger code, std::string_view text);

}  // namespace vantrel::standins
