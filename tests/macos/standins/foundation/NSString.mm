#import <Foundation/Foundation.h>
#include <glib.h>

#include <functional>
#include <utility>

#include "tests/macos/standins/foundation/NSString+Units.h"
#include "tests/macos/standins/foundation/Text.h"

using vantrel::standins::textOf;
using vantrel::standins::utf16;
using vantrel::standins::utf8;

/// A text created at run time.
@interface VantrelString : NSString
@end

/// A text literal, in the compiler's layout. It is never destroyed.
@interface __NSCFConstantString : NSString
@end

__asm__(".globl __CFConstantStringClassReference\n"
        ".set __CFConstantStringClassReference, OBJC_CLASS_$___NSCFConstantString");

extern "C" id objc_retainAutorelease(id object);

namespace {

// Roman numerals and circled letters, which GLib leaves alone because they are no letters.
std::string withUpperSigns(const std::string& text) {
    std::u16string units = utf16(text).value_or(u"");
    for (char16_t& unit : units) {
        if (unit >= u'ⅰ' && unit <= u'ⅿ') unit = static_cast<char16_t>(unit - (u'ⅰ' - u'Ⅰ'));
        if (unit >= u'ⓐ' && unit <= u'ⓩ') unit = static_cast<char16_t>(unit - (u'ⓐ' - u'Ⓐ'));
    }
    return utf8(units, true).value_or(text);
}

}  // namespace

@implementation NSString

+ (instancetype)alloc {
    if (self == [NSString class]) return (id)[VantrelString alloc];
    return [super alloc];
}

+ (instancetype)string {
    return [[self alloc] init];
}

- (instancetype)init {
    return [super init];
}

- (instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding {
    (void)bytes, (void)length, (void)encoding;
    vantrel::standins::raise(@"NSInvalidArgumentException", @"-initWithBytes: of an abstract string");
}

- (std::u16string)vantrel_units {
    vantrel::standins::raise(@"NSInvalidArgumentException", @"-length of an abstract string");
}

- (NSUInteger)length {
    return [self vantrel_units].size();
}

// Valid until the current pool ends.
- (const char*)UTF8String {
    const auto bytes = utf8([self vantrel_units], false);
    if (!bytes) return nullptr;
    NSData* data = [NSData dataWithBytes:bytes->c_str() length:bytes->size() + 1];
    return static_cast<const char*>([(NSData*)objc_retainAutorelease(data) bytes]);
}

// GLib has Unicode's tables with the special cases. In the C locale it applies no language's own rules.
- (NSString*)uppercaseString {
    const std::string bytes = vantrel::standins::bytesOf(self);
    std::string upper;
    // GLib ends a text at a zero byte.
    for (std::size_t at = 0; at <= bytes.size();) {
        const std::size_t zero = std::min(bytes.find('\0', at), bytes.size());
        char* const piece = g_utf8_strup(bytes.data() + at, static_cast<gssize>(zero - at));
        upper += piece;
        g_free(piece);
        if (zero < bytes.size()) upper += '\0';
        at = zero + 1;
    }
    return textOf(withUpperSigns(upper));
}

- (BOOL)isEqualToString:(NSString*)other {
    return other != nil && [self vantrel_units] == [other vantrel_units];
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSString class]] && [self isEqualToString:object];
}

- (NSUInteger)hash {
    return std::hash<std::u16string>()([self vantrel_units]);
}

- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding {
    return [self dataUsingEncoding:encoding allowLossyConversion:NO];
}

- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy {
    if (encoding != NSUTF8StringEncoding) vantrel::standins::raise(@"NSInvalidArgumentException", @"an encoding");
    const auto bytes = utf8([self vantrel_units], lossy);
    return bytes ? [NSData dataWithBytes:bytes->data() length:bytes->size()] : nil;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

- (id)mutableCopyWithZone:(struct _NSZone*)zone {
    (void)zone;
    NSMutableString* copy = [NSMutableString string];
    [copy appendString:self];
    return copy;
}

@end

@implementation VantrelString {
    std::u16string _units;
}

- (instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding {
    if (encoding != NSUTF8StringEncoding) vantrel::standins::raise(@"NSInvalidArgumentException", @"an encoding");
    self = [super init];
    auto units = utf16({static_cast<const char*>(bytes), length});
    if (self == nil || !units) return nil;
    _units = std::move(*units);
    return self;
}

- (std::u16string)vantrel_units {
    return _units;
}

@end

@implementation NSMutableString {
    std::u16string _units;
}

- (std::u16string)vantrel_units {
    return _units;
}

- (void)appendString:(NSString*)text {
    if (text == nil) vantrel::standins::raise(@"NSInvalidArgumentException", @"-appendString: nil argument");
    _units += [text vantrel_units];
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    const auto bytes = utf8(_units, true);
    return textOf(*bytes);
}

@end

@implementation __NSCFConstantString

- (std::u16string)vantrel_units {
    struct Layout {
        void* isa;
        int flags;
        const void* units;
        long length;
    };
    constexpr int isUTF16 = 0x10;
    const auto* const layout = static_cast<const Layout*>((__bridge void*)self);
    const auto length = static_cast<std::size_t>(layout->length);
    if ((layout->flags & isUTF16) != 0) return {static_cast<const char16_t*>(layout->units), length};
    return *utf16({static_cast<const char*>(layout->units), length});
}

@end
