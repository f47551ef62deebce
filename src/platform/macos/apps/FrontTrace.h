#pragma once

#import <AppKit/AppKit.h>

namespace vantrel::macos {

/// Which request has brought an application to the front, for whoever tries a Mac out: on standard error each request
/// with the system's answer, and a second later who is in front. Only if the client was started with
/// VANTREL_TRACE=front in its environment. Any thread.
class FrontTrace {
  public:
    /// Returns the answer.
    static bool answered(NSRunningApplication* _Nonnull asked, const char* _Nonnull request, bool answer);
    /// Of a request that the system does not answer.
    static void made(NSRunningApplication* _Nonnull asked, const char* _Nonnull request);
    /// The last request has been made.
    static void lookLater();
};

}  // namespace vantrel::macos
