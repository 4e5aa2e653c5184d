// log/debug_log.h: what the library's own files need of the debug log beside kest/log.h.
#pragma once
#include <cstdint>

#include "kest/log.h"

// logs tells whether lines of `bit` are on. If not, kest_log gets a mask of 0 and drops them: asked
// ahead of lines that come for each octet, this spares the calls.
inline bool logs(uint32_t bit) {
  return (log_level & bit) != 0;
}
