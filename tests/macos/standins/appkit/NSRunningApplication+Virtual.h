#pragma once

#import <AppKit/NSRunningApplication.h>

#include <memory>

#include "platform/apps/RunningApplications.h"

@interface NSRunningApplication (VantrelVirtual)
/// Nil for null.
+ (nullable NSRunningApplication*)vantrel_applicationOf:(std::shared_ptr<vantrel::RunningApplication>)application;
@end
