#pragma once

// What Apple's C library has in addition to Linux's. Included before everything else.
#include <fcntl.h>
#include <stdint.h>
#include <time.h>

#define CLOCK_UPTIME_RAW 8
#define F_SETNOSIGPIPE 73

extern "C" uint64_t clock_gettime_nsec_np(int clock);

#ifdef __OBJC__
// The compiler takes every system outside Apple's for new enough. With this, @available(macOS 14.0, *) asks the Mac.
extern "C" bool vantrel_available(const char* system);
#define available(...) selector(self) != nullptr&& vantrel_available(#__VA_ARGS__)
#endif
