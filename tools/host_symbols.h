// tools/host_symbols.h: the host's side of the debug log.
#pragma once
#include <cstddef>

#include "kest/log.h"

constexpr size_t LOG_FILE_CAPACITY = 254; // with the terminator
