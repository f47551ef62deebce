#import <Foundation/Foundation.h>
#include <uriparser/Uri.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Classes.h"
#include "tests/macos/standins/runtime/Singletons.h"

using namespace vantrel::standins;

namespace {

/// Whether it is a reference by RFC 3986.
bool isReference(std::string_view text) {
    UriUriA uri;
    const char* error = nullptr;
    if (uriParseSingleUriExA(&uri, text.data(), text.data() + text.size(), &error) != URI_SUCCESS) return false;
    uriFreeUriMembersA(&uri);
    return true;
}

bool isEscape(std::string_view text) {
    const auto isHexDigit = [&](std::size_t at) { return std::isxdigit(static_cast<unsigned char>(text[at])) != 0; };
    return text.size() >= 3 && text[0] == '%' && isHexDigit(1) && isHexDigit(2);
}

std::string withoutHalfEscapes(std::string_view text) {
    std::string whole;
    for (; !text.empty(); text.remove_prefix(1)) {
        if (text[0] != '%' || isEscape(text)) whole += text[0];
    }
    return whole;
}

/// With an escape for every byte that no address has.
std::string withEscapes(std::string_view text) {
    static constexpr std::string_view allowed = "!#$&'()*+,-./0123456789:;=?@[]_~"
                                                "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string escaped;
    for (; !text.empty(); text.remove_prefix(1)) {
        const auto byte = static_cast<unsigned char>(text[0]);
        if (isEscape(text) || allowed.find(text[0]) != std::string_view::npos) {
            escaped += text[0];
        } else {
            escaped += {'%', digits[byte >> 4], digits[byte & 15]};
        }
    }
    return escaped;
}

// At most six bytes for each byte of the path.
std::string fileAddress(const std::string& path) {
    constexpr std::size_t longest = 3;
    std::string address = "file://";
    std::string_view rest = path;
    while (!rest.empty()) {
        const std::size_t slash = std::min(rest.find('/'), rest.size());
        std::vector<char> escaped(slash * longest + 1);
        uriEscapeExA(rest.data(), rest.data() + slash, escaped.data(), URI_FALSE, URI_FALSE);
        address += escaped.data();
        if (slash < rest.size()) address += '/';
        rest.remove_prefix(std::min(slash + 1, rest.size()));
    }
    return address;
}

}  // namespace

/// As of macOS 14, whose parser follows RFC 3986. No page says that an older one looks at what follows a percent sign,
/// so there it does not. What else an older one accepts is not stood in for.
@implementation NSURL {
    NSString* _text;
    NSString* _path;
}

// From macOS 14 on it escapes what it used to refuse.
+ (instancetype)URLWithString:(NSString*)text {
    const bool isOlder = !systemIsAtLeast(14);
    if (text == nil) return nil;
    if (isOlder) return [self vantrel_URLWithString:text];
    return [self vantrel_URLWithString:textOf(withEscapes(bytesOf(text)))];
}

+ (instancetype)URLWithString:(NSString*)text encodingInvalidCharacters:(BOOL)encoding {
    if (!systemIsAtLeast(14)) {
        vantrel::standins::raise(@"NSInvalidArgumentException", @"encodingInvalidCharacters: unrecognized selector");
    }
    // Escaping characters that are not allowed is not stood in for.
    if (encoding) fatal("a URL whose characters are to be escaped");
    return [self vantrel_URLWithString:text];
}

+ (instancetype)vantrel_URLWithString:(NSString*)text {
    if (text == nil) return nil;
    const std::string bytes = bytesOf(text);
    const std::string checked = systemIsAtLeast(14) ? bytes : withoutHalfEscapes(bytes);
    if (checked.empty() || !isReference(checked)) return nil;
    // The Mac can be told to refuse an address.
    if (!mac().parts().urls.form(checked)) return nil;
    NSURL* url = [[self alloc] init];
    url->_text = [text copy];
    return url;
}

+ (NSURL*)fileURLWithPath:(NSString*)path {
    return [self fileURLWithPath:path isDirectory:NO];
}

+ (NSURL*)fileURLWithPath:(NSString*)path isDirectory:(BOOL)isDirectory {
    if (path == nil) vantrel::standins::raise(@"NSInvalidArgumentException", @"nil string parameter");
    NSURL* url = [[self alloc] init];
    url->_path = [path copy];
    url->_text = textOf(fileAddress(bytesOf(path)) + (isDirectory ? "/" : ""));
    return url;
}

- (NSString*)absoluteString {
    return _text;
}

- (NSString*)path {
    return _path;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

@implementation NSCharacterSet

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

- (id)mutableCopyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

@implementation NSCharacterSet (NSURLUtilities)

+ (NSCharacterSet*)URLQueryAllowedCharacterSet {
    static NSCharacterSet* const set = singleton([[NSCharacterSet alloc] init]);
    return set;
}

@end

@implementation NSString (NSURLUtilities)

- (NSString*)stringByAddingPercentEncodingWithAllowedCharacters:(NSCharacterSet*)allowed {
    if (allowed != NSCharacterSet.URLQueryAllowedCharacterSet) {
        vantrel::standins::raise(@"NSInvalidArgumentException", @"a character set that is not stood in for");
    }
    NSData* data = [self dataUsingEncoding:NSUTF8StringEncoding];
    // The Mac can be told to refuse a text.
    if (data == nil || !mac().parts().urls.addingPercentEncodingForQuery(bytesOf(self))) return nil;
    static constexpr std::string_view allowedInQueries = "!$&'()*+,-./0123456789:;=?@_~"
                                                         "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    std::string encoded;
    const auto* const bytes = static_cast<const unsigned char*>(data.bytes);
    for (NSUInteger index = 0; index < data.length; ++index) {
        if (allowedInQueries.find(static_cast<char>(bytes[index])) != std::string_view::npos) {
            encoded += static_cast<char>(bytes[index]);
        } else {
            constexpr std::string_view digits = "0123456789ABCDEF";
            encoded += {'%', digits[bytes[index] >> 4], digits[bytes[index] & 15]};
        }
    }
    return textOf(encoded);
}

@end
