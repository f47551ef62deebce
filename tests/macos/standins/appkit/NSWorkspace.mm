#import <AppKit/AppKit.h>

#include <utility>
#include <variant>
#include <vector>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/appkit/NSRunningApplication+Virtual.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Singletons.h"

using namespace vantrel::standins;

NSNotificationName NSWorkspaceActiveSpaceDidChangeNotification = @"NSWorkspaceActiveSpaceDidChangeNotification";

@interface NSNotificationCenter (VantrelWorkspace)
+ (NSNotificationCenter*)vantrel_workspaceCenter;
@end

@implementation NSWorkspaceOpenConfiguration

+ (instancetype)configuration {
    NSWorkspaceOpenConfiguration* configuration = [[self alloc] init];
    configuration.activates = YES;
    return configuration;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

namespace {

using Handler = void (^)(NSRunningApplication*, NSError*);

void answer(Handler handler, const vantrel::ApplicationOpener::Result& result) {
    if (handler == nil) return;
    if (const auto* failure = std::get_if<vantrel::PlatformError>(&result)) {
        handler(nil, errorOf(@"NSCocoaErrorDomain", 4, failure->localizedDescription));
    } else {
        handler(
            [NSRunningApplication vantrel_applicationOf:std::get<std::shared_ptr<vantrel::RunningApplication>>(result)],
            nil);
    }
}

}  // namespace

@implementation NSWorkspace

+ (NSWorkspace*)sharedWorkspace {
    static NSWorkspace* const workspace = singleton([[NSWorkspace alloc] init]);
    return workspace;
}

- (NSNotificationCenter*)notificationCenter {
    return [NSNotificationCenter vantrel_workspaceCenter];
}

- (NSRunningApplication*)frontmostApplication {
    return [NSRunningApplication vantrel_applicationOf:mac().parts().frontmostApplication.frontmostApplication()];
}

- (BOOL)openURL:(NSURL*)url {
    if (url == nil) raise(@"NSInvalidArgumentException", @"openURL: nil");
    return mac().parts().workspace.open({bytesOf(url.absoluteString)});
}

- (void)openURLs:(NSArray<NSURL*>*)urls
    withApplicationAtURL:(NSURL*)applicationURL
           configuration:(NSWorkspaceOpenConfiguration*)configuration
       completionHandler:(Handler)handler {
    if (applicationURL == nil) raise(@"NSInvalidArgumentException", @"an application that is nil");
    std::vector<vantrel::URL> addresses;
    for (NSURL* url in urls) addresses.push_back({bytesOf(url.absoluteString)});
    mac().parts().applicationOpener.open(
        addresses, {bytesOf(applicationURL.absoluteString)}, configuration.activates,
        [handler](vantrel::ApplicationOpener::Result result) {
            withPool([handler, result = std::move(result)] { answer(handler, result); })();
        });
}

@end
