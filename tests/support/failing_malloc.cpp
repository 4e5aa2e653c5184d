#include "tests/support/failing_malloc.h"

#include <cstddef>
#include <cstring>

int mallocs_left = -1;

// The tests are linked with --wrap=malloc.
extern "C" void *__real_malloc(size_t size);
extern "C" void *__wrap_malloc(size_t size);

void *__wrap_malloc(size_t size) {
  if (mallocs_left == 0) {
    return nullptr;
  }
  if (mallocs_left > 0) {
    --mallocs_left;
  }
  void *block = __real_malloc(size);
  return block == nullptr ? nullptr : memset(block, FRESH, size);
}
