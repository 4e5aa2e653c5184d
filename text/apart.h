// text/apart.h: conversions whose output overlaps their input.
#pragma once
#include <cstddef>

#include "util/heap.h"

// kest_keep_apart returns where to read the `size` octets of `src` while up to `room` octets of
// `dst` are written. That is `src`, or a copy in `copy` if the two overlap. Without memory for a
// copy it returns null.
const void *kest_keep_apart(const void *src, size_t size, const void *dst, size_t room,
                            heap<void> &copy);
