// log/debug_log.h: what the library's own files need of the debug log beside kest/log.h.
#pragma once
#include <cstdint>

#include "kest/log.h"

// kest_log_error and kest_log_debug write a line if log_level has their bit.
[[gnu::format(printf, 1, 2)]] void kest_log_error(const char *format, ...);
[[gnu::format(printf, 1, 2)]] void kest_log_debug(const char *format, ...);

// logs returns whether log_level has `bit`. It saves calls before lines for each octet.
inline bool logs(uint32_t bit) {
  return (log_level & bit) != 0;
}
