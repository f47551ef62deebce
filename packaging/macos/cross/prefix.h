// What nearly every source reads, read once for all of them by script/macos-tools. That each file includes what it uses
// is what the builds show; what none of them compiles is checked without this.
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
