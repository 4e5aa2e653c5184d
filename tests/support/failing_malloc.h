// tests/support/failing_malloc.h: a library without memory.
#pragma once

// While it is set, each malloc of the library and the tests fails. The C++ runtime has its own.
extern bool malloc_fails;
