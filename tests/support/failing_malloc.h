// tests/support/failing_malloc.h: a library without memory.
#pragma once

// While it lives, each malloc of the library and the tests fails. The C++ runtime has its own.
class failing_malloc {
public:
  failing_malloc();
  ~failing_malloc();
  failing_malloc(const failing_malloc &) = delete;
  failing_malloc &operator=(const failing_malloc &) = delete;
};
