#pragma once

// On Intel a BOOL is a signed char.
typedef signed char BOOL;
#define YES ((BOOL)1)
#define NO ((BOOL)0)
#ifndef nil
#define nil nullptr
#endif
