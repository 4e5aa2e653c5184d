#include "tests/support/failing_malloc.h"

#include <cstddef>

bool malloc_fails = false;

// The tests are linked with --wrap=malloc.
extern "C" void *__real_malloc(size_t size);
extern "C" void *__wrap_malloc(size_t size);

void *__wrap_malloc(size_t size) {
  return malloc_fails ? nullptr : __real_malloc(size);
}
