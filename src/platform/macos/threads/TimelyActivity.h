#pragma once

#import <Foundation/Foundation.h>

namespace vantrel::macos {

/// Tells the system, for as long as it lives, that the process works for the user although none of its windows may be
/// visible. Without it timers are napped: they come late, by minutes in the end. The Mac may still go to sleep. Any
/// thread.
class TimelyActivity {
  public:
    TimelyActivity();
    ~TimelyActivity();
    TimelyActivity(const TimelyActivity&) = delete;
    TimelyActivity& operator=(const TimelyActivity&) = delete;

  private:
    id<NSObject> token_;
};

}  // namespace vantrel::macos
