#pragma once

#include <sys/time.h>
#include <sys/types.h>

// Only what the facts about one process need.
enum { CTL_KERN = 1, KERN_PROC = 14, KERN_PROC_PID = 1 };
enum { SRUN = 2, SZOMB = 5 };

struct extern_proc {
    struct timeval p_starttime;
    char p_stat;
};

struct kinfo_proc {
    struct extern_proc kp_proc;
};

extern "C" int sysctl(int* name, unsigned count, void* old, size_t* oldSize, void* fresh, size_t freshSize);
