#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Objects.h"

namespace vantrel::standins {
namespace {

/// Reports its own end.
struct Witness {
    bool* ended = nullptr;
    ~Witness() {
        if (ended != nullptr) *ended = true;
    }
};

}  // namespace
}  // namespace vantrel::standins

@interface VantrelProbe : NSObject
@property(copy) NSString* text;
@property(weak) VantrelProbe* other;
- (NSRect)rectWithOrigin:(NSPoint)origin side:(CGFloat)side;
@end

@implementation VantrelProbe {
  @public
    vantrel::standins::Witness _witness;
}

- (NSRect)rectWithOrigin:(NSPoint)origin side:(CGFloat)side {
    return NSMakeRect(origin.x, origin.y, side, side);
}

@end

@interface VantrelLateProbe : VantrelProbe
@end

@implementation VantrelLateProbe {
    long _own;
}

- (NSRect)rectWithOrigin:(NSPoint)origin side:(CGFloat)side {
    _own = 1;
    return [super rectWithOrigin:origin side:side + static_cast<CGFloat>(_own)];
}

@end

namespace vantrel::standins {
namespace {

long living(const char* name) {
    const auto all = livingObjects();
    const auto found = all.find(name);
    return found == all.end() ? 0 : found->second;
}

TEST(Runtime, AnObjectEndsWithItsLastReferenceAndItsCxxMembersWithIt) {
    bool ended = false;
    @autoreleasepool {
        VantrelProbe* probe = [[VantrelProbe alloc] init];
        probe->_witness.ended = &ended;
        EXPECT_EQ(living("VantrelProbe"), 1);
        EXPECT_FALSE(ended);
    }
    EXPECT_TRUE(ended);
    EXPECT_EQ(living("VantrelProbe"), 0);
}

TEST(Runtime, AWeakReferenceIsNilAsSoonAsItsObjectHasEnded) {
    @autoreleasepool {
        VantrelProbe* first = [[VantrelProbe alloc] init];
        @autoreleasepool {
            VantrelProbe* second = [[VantrelProbe alloc] init];
            first.other = second;
            EXPECT_EQ(first.other, second);
        }
        EXPECT_EQ(first.other, nil);
    }
}

TEST(Runtime, AutoreleasedObjectsGoWithTheirPool) {
    @autoreleasepool {
        @autoreleasepool {
            [NSMutableArray arrayWithCapacity:1];
        }
        EXPECT_EQ(living("NSMutableArray"), 0);
    }
}

TEST(Runtime, ASubclassHasItsOwnVariablesBehindThoseOfItsSuperclass) {
    @autoreleasepool {
        bool ended = false;
        VantrelLateProbe* probe = [[VantrelLateProbe alloc] init];
        probe->_witness.ended = &ended;
        const NSRect rect = [probe rectWithOrigin:NSMakePoint(3, 4) side:5];
        EXPECT_EQ(rect.origin.x, 3);
        EXPECT_EQ(rect.origin.y, 4);
        EXPECT_EQ(rect.size.width, 6);
        EXPECT_EQ(probe->_witness.ended, &ended);
    }
}

TEST(Runtime, AMessageToNilGivesZero) {
    VantrelProbe* nobody = nil;
    const NSRect rect = [nobody rectWithOrigin:NSMakePoint(3, 4) side:5];
    EXPECT_EQ(rect.origin.x, 0);
    EXPECT_EQ(rect.size.height, 0);
    EXPECT_EQ(nobody.text, nil);
}

TEST(Runtime, ACopiedPropertyDoesNotChangeWithItsOriginal) {
    @autoreleasepool {
        VantrelProbe* probe = [[VantrelProbe alloc] init];
        NSMutableString* text = [NSMutableString string];
        [text appendString:@"prima"];
        probe.text = text;
        [text appendString:@" dopo"];
        EXPECT_EQ(bytesOf(probe.text), "prima");
    }
}

TEST(Runtime, ABlockKeepsWhatItHasCapturedAndSharesWhatIsMarkedSo) {
    bool ended = false;
    @autoreleasepool {
        int (^count)() = nil;
        @autoreleasepool {
            VantrelProbe* probe = [[VantrelProbe alloc] init];
            probe->_witness.ended = &ended;
            __block int calls = 0;
            count = ^{
              EXPECT_NE(probe, nil);
              return ++calls;
            };
            EXPECT_EQ(count(), 1);
            EXPECT_EQ(calls, 1);
        }
        EXPECT_FALSE(ended);
        EXPECT_EQ(count(), 2);
    }
    EXPECT_TRUE(ended);
    EXPECT_EQ(living("block"), 0);
}

TEST(Runtime, AnExceptionPassesThroughCxxFramesAndEndsTheirObjects) {
    @autoreleasepool {
        bool ended = false;
        std::string reason;
        @try {
            const Witness witness{&ended};
            raise(@"NSRangeException", @"fuori");
        } @catch (NSException* exception) {
            reason = bytesOf(exception.reason);
        }
        EXPECT_TRUE(ended);
        EXPECT_EQ(reason, "fuori");
    }
    EXPECT_EQ(living("NSException"), 0);
}

TEST(Runtime, AnObjectiveCatchLeavesACxxExceptionAlone) {
    bool caught = false;
    try {
        @try {
            throw std::runtime_error("C++");
        } @catch (NSException*) {
            ADD_FAILURE();
        }
    } catch (const std::runtime_error&) {
        caught = true;
    }
    EXPECT_TRUE(caught);
}

TEST(Runtime, AnUnknownSelectorRaises) {
    @autoreleasepool {
        id probe = [[VantrelProbe alloc] init];
        NSString* reason = nil;
        @try {
            [(NSArray*)probe count];
        } @catch (NSException* exception) {
            EXPECT_TRUE([exception.name isEqualToString:@"NSInvalidArgumentException"]);
            reason = exception.reason;
        }
        EXPECT_TRUE([reason isEqualToString:@"-[VantrelProbe count]: unrecognized selector"]);
    }
}

TEST(Runtime, AnUnknownSelectorThatNobodyCatchesEndsTheProcess) {
    const auto send = []() noexcept { [(NSArray*)(id)[[VantrelProbe alloc] init] count]; };
    EXPECT_DEATH(send(), "");
}

TEST(Runtime, NilInACollectionRaises) {
    @autoreleasepool {
        id nothing = nil;
        bool raised = false;
        @try {
            [[NSMutableArray arrayWithCapacity:1] addObject:nothing];
        } @catch (NSException*) {
            raised = true;
        }
        EXPECT_TRUE(raised);
    }
}

TEST(Runtime, ATextIsUTF16AndOnlyValidBytesMakeOne) {
    @autoreleasepool {
        EXPECT_EQ([textOf("a😀è") length], 4U);
        EXPECT_EQ(bytesOf(textOf("a😀è")), "a😀è");
        EXPECT_TRUE([textOf("è🔒") isEqualToString:@"è🔒"]);
        for (const char* bytes : {"\xc3", "\xc0\x80", "\xed\xa0\x80", "\xf5\x80\x80\x80", "a\x80"}) {
            EXPECT_EQ(textOf(bytes), nil) << bytes;
        }
        EXPECT_EQ(utf8(u"a\xd83d", true), "a?");
        EXPECT_EQ(utf8(u"a\xd83d", false), std::nullopt);
    }
}

}  // namespace
}  // namespace vantrel::standins
