#pragma once

#include <objc/NSObject.h>
#include <stdint.h>

@protocol OS_dispatch_queue <NSObject>
@end
@protocol OS_dispatch_group <NSObject>
@end
@protocol OS_dispatch_semaphore <NSObject>
@end

typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef NSObject<OS_dispatch_group>* dispatch_group_t;
typedef NSObject<OS_dispatch_semaphore>* dispatch_semaphore_t;
typedef uint64_t dispatch_time_t;
typedef void (^dispatch_block_t)(void);

#define DISPATCH_TIME_NOW (0ull)
#define DISPATCH_TIME_FOREVER (~0ull)
enum { QOS_CLASS_USER_INITIATED = 0x19 };

extern "C" {
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t nanoseconds);
dispatch_queue_t dispatch_get_main_queue(void);
dispatch_queue_t dispatch_get_global_queue(intptr_t identifier, uintptr_t flags);
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block);
void dispatch_assert_queue(dispatch_queue_t queue);
dispatch_group_t dispatch_group_create(void) __attribute__((ns_returns_retained));
void dispatch_group_enter(dispatch_group_t group);
void dispatch_group_leave(dispatch_group_t group);
void dispatch_group_notify(dispatch_group_t group, dispatch_queue_t queue, dispatch_block_t block);
dispatch_semaphore_t dispatch_semaphore_create(intptr_t value) __attribute__((ns_returns_retained));
intptr_t dispatch_semaphore_signal(dispatch_semaphore_t semaphore);
intptr_t dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t timeout);
}
