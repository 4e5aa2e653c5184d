// log/debug_log.h: what the library's own files need of the debug log beside kest/log.h.
#pragma once
#include <cstdint>

#include "kest/log.h"

// logs is false if kest_log would drop each line of `bit`, for it gets a mask of 0. Asked ahead of
// lines that come for each octet, it spares the calls.
inline bool logs(uint32_t bit) {
  return (log_level & bit) != 0;
}
