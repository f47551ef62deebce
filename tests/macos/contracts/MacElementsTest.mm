#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>
#include <unistd.h>

#include <variant>

#include "platform/macos/desktop/AccessibilityValueBridge.h"
#include "platform/macos/desktop/MacAccessibility.h"
#include "tests/contracts/ContractTest.h"

namespace vantrel::macos {
namespace {

class MacElements : public contracts::ContractTest {};

using Elements = std::vector<std::shared_ptr<AccessibilityElement>>;

bool isNothing(CFTypeRef object) {
    return std::holds_alternative<std::monostate>(accessibilityValue(object));
}

CFReference<AXUIElementRef> element() {
    return CFReference<AXUIElementRef>::created(AXUIElementCreateApplication(getpid()));
}

// An application may answer with any type.
TEST_F(MacElements, TakeAValueOfATypeThatIsNotUsedForNone) {
    @autoreleasepool {
        const CGRect rect = CGRectMake(1, 2, 3, 4);
        const auto value = CFReference<AXValueRef>::created(AXValueCreate(kAXValueTypeCGRect, &rect));
        EXPECT_TRUE(isNothing(nullptr));
        EXPECT_TRUE(isNothing((__bridge CFTypeRef)[NSString string]));
        EXPECT_TRUE(isNothing((__bridge CFTypeRef)[NSNumber numberWithInt:1]));
        EXPECT_TRUE(isNothing((__bridge CFTypeRef)[NSNull null]));
        EXPECT_TRUE(isNothing((__bridge CFTypeRef)[NSDictionary dictionary]));
        EXPECT_TRUE(isNothing(value.get()));
    }
}

TEST_F(MacElements, KeepOfAListTheElements) {
    @autoreleasepool {
        const auto member = element();
        NSMutableArray* mixed = [NSMutableArray arrayWithCapacity:3];
        [mixed addObject:[NSString string]];
        [mixed addObject:(__bridge id)member.get()];
        [mixed addObject:[NSNull null]];
        const auto values = accessibilityValue((__bridge CFTypeRef)mixed);
        ASSERT_TRUE(std::holds_alternative<Elements>(values));
        ASSERT_EQ(std::get<Elements>(values).size(), 1U);
        EXPECT_EQ(dynamic_cast<MacAccessibilityElement&>(*std::get<Elements>(values).front()).get(), member.get());

        const auto none = accessibilityValue((__bridge CFTypeRef)[NSArray array]);
        ASSERT_TRUE(std::holds_alternative<Elements>(none));
        EXPECT_TRUE(std::get<Elements>(none).empty());
    }
}

TEST_F(MacElements, AreReadBackAsTheyAreWritten) {
    for (const AccessibilityValue& value :
         {AccessibilityValue(true), AccessibilityValue(false), AccessibilityValue(Point{-1440, 12.5}),
          AccessibilityValue(Size{1440, 900})}) {
        const auto object = accessibilityObject(value);
        ASSERT_TRUE(object);
        EXPECT_EQ(accessibilityValue(object.get()), value);
    }
    EXPECT_FALSE(accessibilityObject(std::monostate{}));
    EXPECT_FALSE(accessibilityObject(Elements()));
}

TEST_F(MacElements, GiveAnErrorWhereThereIsNone) {
    MacAccessibilityElement none{CFReference<AXUIElementRef>()};
    EXPECT_TRUE(std::holds_alternative<AccessibilityError>(none.attribute("AXWindows")));
    EXPECT_EQ(none.setAttribute("AXFullScreen", true), accessibilityInvalidElement);
    EXPECT_EQ(none.performAction("AXPress"), accessibilityInvalidElement);
}

TEST_F(MacElements, GiveAnErrorForANameThatIsNotUTF8) {
    MacAccessibilityElement application(element());
    EXPECT_TRUE(std::holds_alternative<AccessibilityError>(application.attribute("AX\xff")));
    EXPECT_NE(application.setAttribute("AX\xff", true), accessibilitySuccess);
    EXPECT_NE(application.performAction("AX\xff"), accessibilitySuccess);
}

}  // namespace
}  // namespace vantrel::macos
