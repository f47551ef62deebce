#include "platform/macos/network/MacURLSession.h"

#import <Foundation/Foundation.h>

#include "platform/macos/bridge/ErrorBridge.h"
#include "platform/macos/bridge/FormedURL.h"
#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

static_assert(static_cast<NSUInteger>(CachePolicy::useProtocolCachePolicy) == NSURLRequestUseProtocolCachePolicy);

namespace {

NSURLRequest* foundationRequest(const URLRequest& request, NSURL* url) {
    NSMutableURLRequest* made =
        [[NSMutableURLRequest alloc] initWithURL:url
                                     cachePolicy:static_cast<NSURLRequestCachePolicy>(request.cachePolicy)
                                 timeoutInterval:request.timeoutInterval];
    made.HTTPMethod = lenientText(request.method);
    for (const auto& [name, value] : request.headers) {
        [made setValue:lenientText(value) forHTTPHeaderField:lenientText(name)];
    }
    if (request.body && !request.body->empty())
        made.HTTPBody = [NSData dataWithBytes:request.body->data() length:request.body->size()];
    return made;
}

URLReply failure(NSError* error) {
    URLReply reply;
    reply.error = platformError(error);
    return reply;
}

URLReply replyOf(NSData* data, NSURLResponse* response) {
    URLReply reply;
    if ([response isKindOfClass:[NSHTTPURLResponse class]]) {
        reply.statusCode = static_cast<int>(static_cast<NSHTTPURLResponse*>(response).statusCode);
    }
    if (data.length > 0) reply.data = std::string(static_cast<const char*>(data.bytes), data.length);
    return reply;
}

}  // namespace

void MacURLSession::dataTask(URLRequest request, Completion completion) {
    @autoreleasepool {
        NSURLSession* session = NSURLSession.sharedSession;
        NSURL* url = formedURL(request.url.absoluteString);
        if (url == nil) {
            [session.delegateQueue addOperationWithBlock:^{
              completion(failure(badURLError()));
            }];
            return;
        }
        NSURLSessionDataTask* task =
            [session dataTaskWithRequest:foundationRequest(request, url)
                       completionHandler:^(NSData* data, NSURLResponse* response, NSError* error) {
                         completion(error != nil ? failure(error) : replyOf(data, response));
                       }];
        [task resume];
    }
}

}  // namespace vantrel::macos
