// tests/support/failing_malloc.h: a library that runs out of memory.
#pragma once

// How many more calls of malloc, by the library and the tests, succeed; all, while it is negative.
// The C++ runtime has its own.
extern int mallocs_left;

// What stands in each octet of a block that malloc gives.
constexpr int FRESH = 0xEE;
