// Colours, fonts and the like: what the virtual Mac does not show is stored if a description needs it.
#include "tests/macos/standins/appkit/Values.h"

#import <AppKit/AppKit.h>
#import <QuartzCore/CALayer.h>

#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Singletons.h"

using namespace vantrel::standins;

@interface VantrelColor : NSObject
@end

@implementation VantrelColor
@end

@implementation NSColor {
    VantrelColor* _inner;
    vantrel::TextColor _meaning;
    double _white;
}

+ (NSColor*)vantrel_colorOf:(double)white meaning:(vantrel::TextColor)meaning {
    NSColor* color = [[NSColor alloc] init];
    color->_inner = [[VantrelColor alloc] init];
    color->_meaning = meaning;
    color->_white = white;
    return color;
}

+ (NSColor*)colorWithWhite:(CGFloat)white alpha:(CGFloat)alpha {
    (void)alpha;
    return [self vantrel_colorOf:white meaning:vantrel::TextColor::standard];
}

+ (NSColor*)blackColor {
    return [self vantrel_colorOf:0 meaning:vantrel::TextColor::standard];
}

+ (NSColor*)clearColor {
    return [self vantrel_colorOf:0 meaning:vantrel::TextColor::standard];
}

+ (NSColor*)secondaryLabelColor {
    return [self vantrel_colorOf:0 meaning:vantrel::TextColor::secondaryLabel];
}

+ (NSColor*)tertiaryLabelColor {
    return [self vantrel_colorOf:0 meaning:vantrel::TextColor::tertiaryLabel];
}

+ (NSColor*)systemRedColor {
    return [self vantrel_colorOf:0 meaning:vantrel::TextColor::systemRed];
}

- (double)vantrel_white {
    return _white;
}

- (vantrel::TextColor)vantrel_meaning {
    return _meaning;
}

// It lives as long as the color.
- (CGColorRef)CGColor {
    return (__bridge CGColorRef)(id)_inner;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

@implementation CALayer {
    id _color;
}

- (void)setBackgroundColor:(CGColorRef)color {
    _color = (__bridge id)color;
}

- (CGColorRef)backgroundColor {
    return (__bridge CGColorRef)_color;
}

@end

@implementation NSFont {
    vantrel::Font _font;
}

+ (NSFont*)systemFontOfSize:(CGFloat)size {
    NSFont* font = [[NSFont alloc] init];
    font->_font = {size, false};
    return font;
}

+ (NSFont*)boldSystemFontOfSize:(CGFloat)size {
    NSFont* font = [[NSFont alloc] init];
    font->_font = {size, true};
    return font;
}

- (vantrel::Font)vantrel_font {
    return _font;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

@implementation NSCursor

+ (NSCursor*)operationNotAllowedCursor {
    static NSCursor* const cursor = singleton([[NSCursor alloc] init]);
    return cursor;
}

@end

@implementation NSCell

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

@implementation NSResponder

- (instancetype)init {
    return [super init];
}

- (BOOL)performKeyEquivalent:(NSEvent*)event {
    (void)event;
    return NO;
}

- (void)mouseDown:(NSEvent*)event {
    (void)event;
}

- (void)rightMouseDown:(NSEvent*)event {
    (void)event;
}

- (void)otherMouseDown:(NSEvent*)event {
    (void)event;
}

@end
