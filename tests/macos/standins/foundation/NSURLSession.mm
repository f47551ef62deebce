#import <Foundation/Foundation.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Singletons.h"

using namespace vantrel::standins;

@implementation NSURLRequest {
  @protected
    NSURL* _URL;
    NSURLRequestCachePolicy _cachePolicy;
    NSTimeInterval _timeoutInterval;
}

@synthesize URL = _URL, cachePolicy = _cachePolicy, timeoutInterval = _timeoutInterval;

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

- (id)mutableCopyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

@implementation NSMutableURLRequest {
    std::vector<std::pair<std::string, std::string>> _headers;
}

@dynamic cachePolicy, timeoutInterval;

- (void)setCachePolicy:(NSURLRequestCachePolicy)policy {
    _cachePolicy = policy;
}

- (void)setTimeoutInterval:(NSTimeInterval)seconds {
    _timeoutInterval = seconds;
}

- (instancetype)initWithURL:(NSURL*)url
                cachePolicy:(NSURLRequestCachePolicy)policy
            timeoutInterval:(NSTimeInterval)seconds {
    self = [super init];
    if (self == nil) return nil;
    _URL = url;
    _cachePolicy = policy;
    _timeoutInterval = seconds;
    self.HTTPMethod = @"GET";
    return self;
}

// A value replaces the previous one.
- (void)setValue:(NSString*)value forHTTPHeaderField:(NSString*)field {
    const std::string name = bytesOf(field);
    std::erase_if(_headers, [&name](const auto& header) { return header.first == name; });
    if (value != nil) _headers.emplace_back(name, bytesOf(value));
}

- (vantrel::URLRequest)vantrel_request {
    vantrel::URLRequest request;
    request.url.absoluteString = bytesOf(_URL.absoluteString);
    request.cachePolicy = static_cast<vantrel::CachePolicy>(_cachePolicy);
    request.timeoutInterval = _timeoutInterval;
    request.method = bytesOf(self.HTTPMethod);
    request.headers = _headers;
    NSData* body = self.HTTPBody;
    if (body != nil) request.body = std::string(static_cast<const char*>(body.bytes), body.length);
    return request;
}

@end

@interface NSMutableURLRequest (VantrelRequest)
- (vantrel::URLRequest)vantrel_request;
@end

@implementation NSURLResponse

@synthesize URL = _URL;

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

@implementation NSHTTPURLResponse {
    NSInteger _statusCode;
}

- (instancetype)initWithStatus:(NSInteger)status {
    self = [super init];
    if (self != nil) _statusCode = status;
    return self;
}

- (NSInteger)statusCode {
    return _statusCode;
}

@end

@interface NSHTTPURLResponse (VantrelStatus)
- (instancetype)initWithStatus:(NSInteger)status;
@end

using Handler = void (^)(NSData*, NSURLResponse*, NSError*);

@implementation NSURLSessionTask {
  @protected
    NSMutableURLRequest* _request;
    Handler _handler;
}

// Unless the request failed, there is always a response and, by the documentation, data, possibly of no bytes.
+ (void)vantrel_hand:(const vantrel::URLReply&)reply to:(Handler)handler {
    if (reply.error) {
        handler(nil, nil, errorOf(NSURLErrorDomain, NSURLErrorUnknown, reply.error->localizedDescription));
        return;
    }
    NSURLResponse* response =
        reply.statusCode ? [[NSHTTPURLResponse alloc] initWithStatus:*reply.statusCode] : [[NSURLResponse alloc] init];
    const std::string body = reply.data.value_or("");
    handler([NSData dataWithBytes:body.data() length:body.size()], response, nil);
}

- (void)resume {
    Handler handler = _handler;
    if (handler == nil) return;
    _handler = nil;
    mac().parts().urlSession.dataTask([_request vantrel_request], [handler](vantrel::URLReply reply) {
        withPool([handler, reply = std::move(reply)] { [NSURLSessionTask vantrel_hand:reply to:handler]; })();
    });
}

- (void)cancel {
    vantrel::standins::raise(@"NSInvalidArgumentException", @"cancelling is not stood in for");
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

@implementation NSURLSessionDataTask

- (instancetype)initWithRequest:(NSURLRequest*)request handler:(Handler)handler {
    self = [super init];
    if (self == nil) return nil;
    _request = (NSMutableURLRequest*)request;
    _handler = handler;
    return self;
}

@end

@interface NSURLSessionDataTask (VantrelMaking)
- (instancetype)initWithRequest:(NSURLRequest*)request handler:(Handler)handler;
@end

@implementation NSURLSession {
    NSOperationQueue* _delegateQueue;
}

+ (NSURLSession*)sharedSession {
    static NSURLSession* const session = [] {
        NSURLSession* made = [[NSURLSession alloc] init];
        made->_delegateQueue = singleton([[NSOperationQueue alloc] init]);
        return singleton(made);
    }();
    return session;
}

- (NSOperationQueue*)delegateQueue {
    return _delegateQueue;
}

- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)request completionHandler:(Handler)handler {
    return [[NSURLSessionDataTask alloc] initWithRequest:request handler:handler];
}

@end
