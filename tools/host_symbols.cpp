// The symbols that every host of the library defines. `kest --trace` fills them.
#include "tools/host_symbols.h"

uint32_t log_level = 0;
char LOG_FILE[LOG_FILE_CAPACITY] = "";
uint32_t LOG_FILE_MAX_SIZE = 16 << 20;
char LOG_FILE_COMPRESSED[1] = "";
