// Headers that nearly every source reads, precompiled once for all of them by script/macos-tools. The builds show that
// each file includes what it uses; files that no build compiles are checked without this header.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>
#if defined(__OBJC__)
#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>
#endif
