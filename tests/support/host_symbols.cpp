// The tests' side of the debug log: a host that logs nothing until a test asks for it.
#include "tests/support/debug_log.h"

uint32_t log_level = 0;
char LOG_FILE[LOG_FILE_CAPACITY] = "";
uint32_t LOG_FILE_MAX_SIZE = UINT32_MAX;
char LOG_FILE_COMPRESSED[1] = "";
