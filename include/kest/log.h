/// @file
/// kest/log.h: the debug file log with the four symbols that a host defines for it, hex dumps, and
/// two front ends of the system log.

/// @defgroup kest_debug_log Debug file log
/// The library's conversion and message functions write their trace and error lines through
/// kest_log. Each line is one record of the file LOG_FILE: "YYYY/MM/DD hh:mm:ss, pid:NNNNN, " in
/// local time, and the text. Every byte is complemented; a plain line feed follows.
///
/// The host program defines four symbols: log_level, LOG_FILE, LOG_FILE_MAX_SIZE and
/// LOG_FILE_COMPRESSED. They are read at every use and under no lock: a change takes effect with
/// the next line, and LOG_FILE is changed only while no thread logs.
///
/// NOTE: each hexadecimal digit that the library writes is an error line. With KEST_LOG_ERROR one
/// PDU makes some 50 lines, in up to a millisecond. Leave it off, and to see why a PDU was refused
/// switch it on and decode that PDU again.
/// @{
#ifndef KEST_LOG_H
#define KEST_LOG_H

#include "kest/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Bits of `log_level` and of the mask given to kest_log.
enum {
  KEST_LOG_DEBUG = 0x1,     ///< trace lines
  KEST_LOG_ERROR = 0x2,     ///< error lines
  KEST_LOG_CONSOLE = 0x1000 ///< the text also goes to standard output; only in a mask
};

/// What is logged: KEST_LOG_DEBUG, KEST_LOG_ERROR, both or 0. The host defines it.
extern KEST_API uint32_t log_level;

/// The path of the file, a regular one: a FIFO or a terminal can hold up all threads that log, and
/// `fork`. "" means that there is no file, and a path of more than 253 characters
/// counts as a file that can't be opened. The host defines it.
extern KEST_API char LOG_FILE[];

/// Octets: a file that is larger becomes LOG_FILE + ".1" before the next line. The host defines
/// it.
extern KEST_API uint32_t LOG_FILE_MAX_SIZE;

/// For the host's own use; nothing here depends on it. The host defines it.
extern KEST_API char LOG_FILE_COMPRESSED[];

/// kest_log writes one line, formatted as by `vsnprintf` and cut to 2047 bytes. A `mask` of 0 drops
/// it; any other is kept, and KEST_LOG_CONSOLE in it also prints the bare text. A byte 0xFF ends
/// the text in the file. Any thread may call it. A record is appended by one write, so that records
/// do not mix, and nothing is taken from the heap. `errno` is kept. Failures are not reported: if
/// the file can't be opened the line is lost from it.
///
/// NOTE: here, as in log_message and _tulp_pr, a `%n` in a format that stands in writable memory
/// ends the process, if the library was built with fortified calls.
KEST_API void kest_log(uint32_t mask, const char *format, ...) KEST_PRINTF(2, 3);

/// orba_kest_log switches kest_log off (0) or on (any other value), for all threads; any of them
/// may call it. It is enabled when the library is loaded.
KEST_API void orba_kest_log(int32_t enable);

/// kest_format_log_msg formats into `s`, which holds `maxlen` bytes, terminator included. A null
/// `s` or a `maxlen` below 1 leaves everything as it is. No switch has a say in it. Any thread may
/// call it.
KEST_API void kest_format_log_msg(char *s, int32_t maxlen, const char *format, ...)
    KEST_PRINTF(3, 4);

/// kest_print_log_msg writes `msg`, which must not be null, and a line feed to standard error. No
/// switch has a say in it. Any thread may call it.
KEST_API void kest_print_log_msg(const char *msg);

/// @}

/// @defgroup kest_hex_dump Hex dumps
/// Under a heading stand the octets of `data`, 16 to a line, in groups of four:
///
///     title ( 20)
///          41424344 45464748 494A4B4C 4D4E4F50   ABCDEFGHIJKLMNOP
///          51525354                              QRST
///
/// `length` counts the octets of `data`; one of 0 or below gives the heading alone, and `data` may
/// be null then. What is not printable in the process's locale shows as ".". `title` ends in a NUL
/// and is no format. Lines of two dumps at the same time can interleave. `errno` is kept. Any
/// thread may call these functions.
/// @{

/// kest_print_hex dumps to standard output.
KEST_API void kest_print_hex(const char *title, const uint8_t *data, int32_t length);

/// orba_kest_print_hex is kest_print_hex by another name.
KEST_API void orba_kest_print_hex(const char *title, const uint8_t *data, int32_t length);

/// fnPrintHex dumps through kest_log, each line with `mask`; the heading begins with "`number`: ",
/// and a very long one is cut as any line of that log.
KEST_API void fnPrintHex(uint32_t mask, int32_t number, const char *title, const uint8_t *data,
                         int32_t length);

/// @}

/// @defgroup kest_system_log System log with one threshold
/// The plain front end of the system log: one threshold for all lines. Priorities are those of
/// `<syslog.h>`, 0 (LOG_EMERG) to 7 (LOG_DEBUG), the most severe the lowest. The two variables are
/// the host's to set; they are read without a lock.
/// @{

extern KEST_API int32_t log_priority; ///< lines of a higher number are dropped; LOG_INFO at load
extern KEST_API int32_t verbose;      ///< not 0: lines that pass also go to standard output

/// logging_init opens the system log for facility LOG_DAEMON, with LOG_PID and LOG_CONS. The log
/// keeps `ident`, which has to stay valid. Any thread may call it at any time. A
/// process has one connection to the system log: the last of logging_init and init_tulp_syslog sets
/// its identity and facility.
KEST_API void logging_init(const char *ident);

/// logging_close closes the process's connection to the system log. A later line opens it anew.
KEST_API void logging_close(void);

/// log_message writes one line of priority `pri`, which has no facility in it, formatted as by
/// `printf`, unless `pri` is above `log_priority`. Any thread may call it, also before
/// logging_init. The echo to standard output is bare, what `fmt` makes of its arguments, and can
/// stand in another order than in the system log. `errno` is kept, and `%m` names the same reason
/// in both.
KEST_API void log_message(int32_t pri, const char *fmt, ...) KEST_PRINTF(2, 3);

/// @}

/// @defgroup kest_typed_log System log by component
/// The typed front end of the system log: each line names the component that it comes from. A line
/// passes if its type is switched on and its level is not above the one set for the type. Masks and
/// levels are plain words: threads that change them at the same time can lose a change.
/// @{

/// Rows of the tables below.
enum {
  KEST_LOG_TYPES = 13, ///< of log_type_str_and_level
  KEST_LOG_LEVELS = 8, ///< of level_str
  KEST_LOG_FORMATS = 3 ///< of level_fmt_str
};

/// log_type_row is one type of line, a component of the system.
typedef struct log_type_row {
  const char *name; ///< not null, and valid as long as get_log_type_status_str may be called
  int32_t level;    ///< 0 to 7, index of level_str
} log_type_row;

/// Names and levels by type: 0 AT_PARSER, 1 FW_UPGRADE, 2 WLC, 3 TOOLS, 4 MONITOR, 5 WEB, 6 CM, 7
/// UIM, 8 NAS, 9 LOC, 10 DB, 11 CORE, 12 KESTD. All levels are 6 (INFO) at load. A host may write
/// names and levels of its own here.
extern KEST_API log_type_row log_type_str_and_level[KEST_LOG_TYPES];

/// Names of the levels: 0 EMERG, 1 ALERT, 2 CRIT, 3 ERR, 4 WARN, 5 NOTICE, 6 INFO, 7 DEBUG.
extern KEST_API const char *const level_str[KEST_LOG_LEVELS];

/// Names of the formats: 0 FUNC_AND_LINE, 1 TID, 2 LOG_TYPE.
extern KEST_API const char *const level_fmt_str[KEST_LOG_FORMATS];
extern KEST_API uint32_t _log_types; ///< bit n: type n is on; 0x1FFF at load, all of them
extern KEST_API uint32_t _log_fmts;  ///< bit n: format n is on; 7 at load, all of them

/// init_tulp_syslog opens the system log for facility LOG_LOCAL0, with LOG_CONS and LOG_NDELAY and
/// without an identity. _tulp_pr works without it.
KEST_API void init_tulp_syslog(void);

/// exit_tulp_syslog closes the process's connection to the system log.
KEST_API void exit_tulp_syslog(void);

/// _tulp_pr writes one line of type `type` and level `level`, 0 to 7, formatted as by `printf`. A
/// line of a type without a row is dropped; a negative level is as severe as any. Any thread may
/// call it. NOTE: the priority that the system log is given is `level` with bit 0x400 set, which is
/// no facility of `<syslog.h>`. A C library may write such a line after one of its own that
/// complains of the bit (glibc), or drop it (musl). `errno` is kept.
KEST_API void _tulp_pr(uint32_t type, int32_t level, const char *fmt, ...) KEST_PRINTF(3, 4);

/// log_type_is_set tests bit `n` of _log_types, and returns 1 or 0. Of `n` the low five bits count,
/// here and in the seven functions below.
KEST_API int32_t log_type_is_set(uint32_t n);

/// log_type_set switches type `n` on: sets its bit of _log_types.
KEST_API void log_type_set(uint32_t n);

/// log_type_clr switches type `n` off: clears its bit of _log_types.
KEST_API void log_type_clr(uint32_t n);

/// log_type_toggle flips bit `n` of _log_types.
KEST_API void log_type_toggle(uint32_t n);

/// log_fmt_is_set returns bit `n` of _log_fmts. _tulp_pr ignores the formats: they are switches for
/// the host alone.
KEST_API int32_t log_fmt_is_set(uint32_t n);

/// log_fmt_set sets bit `n` of _log_fmts.
KEST_API void log_fmt_set(uint32_t n);

/// log_fmt_clr clears bit `n` of _log_fmts.
KEST_API void log_fmt_clr(uint32_t n);

/// log_fmt_toggle flips bit `n` of _log_fmts.
KEST_API void log_fmt_toggle(uint32_t n);

/// log_type_level_is stores the level of a type in `level_out`, which must not be null. The result
/// is 0, or -1 for a type without a row; then `level_out` is untouched.
KEST_API int32_t log_type_level_is(uint32_t type, int32_t *level_out);

/// log_type_level_set sets the level of a type. The result is 0, or -1 for a type without a row and
/// for a level outside 0 to 7; then nothing changes.
KEST_API int32_t log_type_level_set(uint32_t type, int32_t level);

/// get_log_fmt_status_str returns a table of the formats: a heading and a line for each, which end
/// in carriage return and line feed. The text is in a static buffer of 256 octets, which the next
/// call overwrites. The caller must not free it. Only one thread at a time may call the function.
KEST_API const char *get_log_fmt_status_str(void);

/// get_log_type_status_str gives a table of the types, their switches and levels, as
/// get_log_fmt_status_str does, in a static buffer of its own, of 1024 octets. Names of the host's
/// own are cut where the buffer ends; a level outside 0 to 7 shows as "?".
KEST_API const char *get_log_type_status_str(void);

/// @}

#ifdef __cplusplus
}
#endif

#endif
