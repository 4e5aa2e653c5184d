// kest/log.h: the debug file log, and the four symbols that a host defines for it.
//
// The library's conversion and message functions write their trace and error lines through
// kest_log. Each line is one record of the file LOG_FILE: "YYYY/MM/DD hh:mm:ss, pid:NNNNN, " in
// local time and the text, every byte complemented, then one plain line feed.
#ifndef KEST_LOG_H
#define KEST_LOG_H

#include "kest/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// Bits of `log_level` and of the mask given to kest_log.
enum {
  KEST_LOG_DEBUG = 0x1,     // trace lines
  KEST_LOG_ERROR = 0x2,     // error lines
  KEST_LOG_CONSOLE = 0x1000 // the text also goes to standard output; only in a mask
};

// The host program defines these four. They are read at every use, so that a change takes effect
// with the next line. LOG_FILE is the path itself: "" means that there is no file, and one of more
// than 253 characters counts as a file that can't be opened.
extern KEST_API uint32_t log_level;         // KEST_LOG_DEBUG, KEST_LOG_ERROR, both or 0
extern KEST_API char LOG_FILE[];            // path
extern KEST_API uint32_t LOG_FILE_MAX_SIZE; // octets; a larger file becomes LOG_FILE + ".1"
extern KEST_API char LOG_FILE_COMPRESSED[]; // for the host's own use; nothing here depends on it

// kest_log writes one line, formatted as by `vsnprintf` and cut to 2047 bytes. A `mask` of 0 drops
// it; any other is kept, and KEST_LOG_CONSOLE in it also prints the bare text. A byte 0xFF ends
// the text in the file. Any thread may call it; records of one process do not mix. Failures are
// not reported: if the file can't be opened the line is lost from it.
KEST_API void kest_log(uint32_t mask, const char *format, ...) KEST_PRINTF(2, 3);

// orba_kest_log switches kest_log off (0) or on (any other value). It is on at load.
KEST_API void orba_kest_log(int32_t enable);

// kest_format_log_msg formats into `s`, which holds `maxlen` bytes, terminator included. A null
// `s` or a `maxlen` below 1 leaves everything as it is. No switch has a say in it.
KEST_API void kest_format_log_msg(char *s, int32_t maxlen, const char *format, ...)
    KEST_PRINTF(3, 4);

// kest_print_log_msg writes `msg` and a line feed to standard error. No switch has a say in it.
KEST_API void kest_print_log_msg(const char *msg);

#ifdef __cplusplus
}
#endif

#endif
