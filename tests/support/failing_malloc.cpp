#include "tests/support/failing_malloc.h"

#include <cstddef>

// The tests are linked with --wrap=malloc.
extern "C" void *__real_malloc(size_t size);
extern "C" void *__wrap_malloc(size_t size);

static bool failing = false;

void *__wrap_malloc(size_t size) {
  return failing ? nullptr : __real_malloc(size);
}

failing_malloc::failing_malloc() {
  failing = true;
}

failing_malloc::~failing_malloc() {
  failing = false;
}
