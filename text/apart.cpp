#include "text/apart.h"

#include <cstdint>
#include <cstring>

const void *kest_keep_apart(const void *src, size_t size, const void *dst, size_t room,
                            heap<void> &copy) {
  const auto in = reinterpret_cast<uintptr_t>(src);
  const auto out = reinterpret_cast<uintptr_t>(dst);
  if (in < out ? out - in >= size : in - out >= room) {
    return src;
  }
  copy.reset(malloc(size));
  return copy == nullptr ? nullptr : memcpy(copy.get(), src, size);
}
