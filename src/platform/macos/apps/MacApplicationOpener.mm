#include "platform/macos/apps/MacApplicationOpener.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/apps/MacRunningApplications.h"
#include "platform/macos/bridge/ErrorBridge.h"
#include "platform/macos/bridge/FormedURL.h"

namespace vantrel::macos {

namespace {

ApplicationOpener::Result resultOf(NSRunningApplication* application, NSError* error) {
    if (error != nil) return platformError(error);
    return std::shared_ptr<RunningApplication>(MacRunningApplication::wrapEvenEnded(application));
}

// Nil if one of them is not a URL.
NSArray<NSURL*>* formedURLs(const std::vector<URL>& urls) {
    NSMutableArray<NSURL*>* formed = [NSMutableArray arrayWithCapacity:urls.size()];
    for (const URL& url : urls) {
        NSURL* address = formedURL(url.absoluteString);
        if (address == nil) return nil;
        [formed addObject:address];
    }
    return formed;
}

}  // namespace

void MacApplicationOpener::open(const std::vector<URL>& urls, const URL& application, bool activates,
                                Completion completion) {
    @autoreleasepool {
        NSArray<NSURL*>* addresses = formedURLs(urls);
        NSURL* place = formedURL(application.absoluteString);
        CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
          if (addresses == nil || place == nil) {
              completion(resultOf(nil, badURLError()));
              return;
          }
          NSWorkspaceOpenConfiguration* configuration = [NSWorkspaceOpenConfiguration configuration];
          configuration.activates = activates;
          [NSWorkspace.sharedWorkspace openURLs:addresses
                           withApplicationAtURL:place
                                  configuration:configuration
                              completionHandler:^(NSRunningApplication* opened, NSError* error) {
                                completion(resultOf(opened, error));
                              }];
        });
        CFRunLoopWakeUp(CFRunLoopGetMain());
    }
}

}  // namespace vantrel::macos
