#import <Foundation/Foundation.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <thread>

#include "tests/macos/standins/census/CensusGuard.h"
#include "tests/macos/standins/runtime/Objects.h"
#include "tests/macos/standins/runtime/Singletons.h"

namespace vantrel::standins {
namespace {

TEST(Census, CountsWhatIsLeftByItsClass) {
    const ObjectCensus census;
    const CFTypeRef array = (__bridge_retained CFTypeRef)[[NSMutableArray alloc] init];
    EXPECT_EQ(census.difference(), "+1 NSMutableArray\n");
    CFRelease(array);
    EXPECT_EQ(census.difference(), "");
}

CFTypeRef copiedBlock() {
    NSObject* held = [[NSObject alloc] init];
    return (__bridge_retained CFTypeRef)[^{
      (void)held;
    } copy];
}

TEST(Census, CountsACopiedBlockAndWhatItHolds) {
    const ObjectCensus census;
    const CFTypeRef copied = copiedBlock();
    EXPECT_EQ(census.difference(), "+1 NSObject\n+1 block\n");
    CFRelease(copied);
    EXPECT_EQ(census.difference(), "");
}

TEST(Census, FindsNothingOnceEverythingIsReleased) {
    const ObjectCensus census;
    @autoreleasepool {
        NSMutableArray* array = [[NSMutableArray alloc] init];
        [array addObject:[[NSObject alloc] init]];
        EXPECT_NE(census.difference(), "");
    }
    EXPECT_EQ(census.difference(), "");
}

TEST(Census, LeavesSingletonsAside) {
    const ObjectCensus census;
    static NSObject* const made = singleton([[NSObject alloc] init]);
    EXPECT_NE(made, nil);
    EXPECT_EQ(census.difference(), "");
}

TEST(Census, NoticesAThreadWithoutAPool) {
    const ObjectCensus census;
    NSObject* held = [[NSObject alloc] init];
    std::thread([&held] { objc_autorelease(objc_retain((__bridge Object*)held)); }).join();
    held = nil;
    EXPECT_EQ(census.difference(), "+1 autoreleased without a pool\n");
}

CFTypeRef leaked;

void leak() {
    const CensusGuard guard;
    leaked = (__bridge_retained CFTypeRef)[[NSObject alloc] init];
}

TEST(Census, FailsATestThatLeaksAnObject) {
    EXPECT_NONFATAL_FAILURE(leak(), "+1 NSObject");
    CFRelease(leaked);
}

}  // namespace
}  // namespace vantrel::standins
