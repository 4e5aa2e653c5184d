#include "kest/log.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <span>

#include <syslog.h>

#include "log/system_log.h"
#include "log/unnoticed.h"

uint32_t _log_types = (1u << KEST_LOG_TYPES) - 1;
uint32_t _log_fmts = (1u << KEST_LOG_FORMATS) - 1;

log_type_row log_type_str_and_level[KEST_LOG_TYPES] = {
    {"AT_PARSER", LOG_INFO}, {"FW_UPGRADE", LOG_INFO}, {"WLC", LOG_INFO}, {"TOOLS", LOG_INFO},
    {"MONITOR", LOG_INFO},   {"WEB", LOG_INFO},        {"CM", LOG_INFO},  {"UIM", LOG_INFO},
    {"NAS", LOG_INFO},       {"LOC", LOG_INFO},        {"DB", LOG_INFO},  {"CORE", LOG_INFO},
    {"KESTD", LOG_INFO},
};

const char *const level_str[KEST_LOG_LEVELS] = {"EMERG", "ALERT",  "CRIT", "ERR",
                                                "WARN",  "NOTICE", "INFO", "DEBUG"};

const char *const level_fmt_str[KEST_LOG_FORMATS] = {"FUNC_AND_LINE", "TID", "LOG_TYPE"};

namespace {

// Set in the priority of each line; above the facilities of <syslog.h>.
constexpr int PRIORITY_MARK = 0x400;

constexpr uint32_t bit(uint32_t n) {
  return 1u << (n & 31);
}

bool has_row(uint32_t type) {
  return type < KEST_LOG_TYPES;
}

bool is_level(int32_t level) {
  return level >= 0 && level < KEST_LOG_LEVELS;
}

const char *level_name(int32_t level) {
  return is_level(level) ? level_str[level] : "?";
}

const char *status_name(int32_t set) {
  return set != 0 ? "enabled" : "disabled";
}

// status_text is a table in a static buffer. It is cut at the end of the buffer.
struct status_text {
  std::span<char> buffer;
  size_t size = 0; // of the text so far; no less than that of the buffer once something is cut

  void line(const char *format, ...) KEST_PRINTF(2, 3);
};

void status_text::line(const char *format, ...) {
  if (size >= buffer.size()) {
    return;
  }
  va_list arguments;
  va_start(arguments, format);
  const int added = vsnprintf(&buffer[size], buffer.size() - size, format, arguments);
  va_end(arguments);
  size = added < 0 ? buffer.size() : size + static_cast<size_t>(added);
}

} // namespace

void init_tulp_syslog() {
  const system_log_lock lock;
  openlog(nullptr, LOG_CONS | LOG_NDELAY, LOG_LOCAL0);
}

void exit_tulp_syslog() {
  const system_log_lock lock;
  closelog();
}

void _tulp_pr(uint32_t type, int32_t level, const char *fmt, ...) {
  if (!has_row(type) || log_type_is_set(type) == 0 || log_type_str_and_level[type].level < level) {
    return;
  }
  const unnoticed caller;
  const system_log_lock lock;
  va_list arguments;
  va_start(arguments, fmt);
  vsyslog(level | PRIORITY_MARK, fmt, arguments);
  va_end(arguments);
}

int32_t log_type_is_set(uint32_t n) {
  return (_log_types & bit(n)) != 0;
}

void log_type_set(uint32_t n) {
  _log_types |= bit(n);
}

void log_type_clr(uint32_t n) {
  _log_types &= ~bit(n);
}

void log_type_toggle(uint32_t n) {
  _log_types ^= bit(n);
}

int32_t log_fmt_is_set(uint32_t n) {
  return (_log_fmts & bit(n)) != 0;
}

void log_fmt_set(uint32_t n) {
  _log_fmts |= bit(n);
}

void log_fmt_clr(uint32_t n) {
  _log_fmts &= ~bit(n);
}

void log_fmt_toggle(uint32_t n) {
  _log_fmts ^= bit(n);
}

int32_t log_type_level_is(uint32_t type, int32_t *level_out) {
  if (!has_row(type)) {
    return -1;
  }
  *level_out = log_type_str_and_level[type].level;
  return 0;
}

int32_t log_type_level_set(uint32_t type, int32_t level) {
  if (!has_row(type) || !is_level(level)) {
    return -1;
  }
  log_type_str_and_level[type].level = level;
  return 0;
}

const char *get_log_fmt_status_str() {
  static char buffer[256] = "";
  status_text text{buffer};
  text.line("%2s %-16s %-12s\r\n", "id", "fmt", "status");
  for (uint32_t format = 0; format < KEST_LOG_FORMATS; ++format) {
    text.line("%2d %-16s %-12s\r\n", static_cast<int>(format), level_fmt_str[format],
              status_name(log_fmt_is_set(format)));
  }
  return buffer;
}

const char *get_log_type_status_str() {
  static char buffer[1024] = "";
  status_text text{buffer};
  text.line("%2s %-16s %-10s %-12s\r\n", "id", "type", "status", "level");
  for (uint32_t type = 0; type < KEST_LOG_TYPES; ++type) {
    const log_type_row &row = log_type_str_and_level[type];
    text.line("%2d %-16s %-10s %-12s\r\n", static_cast<int>(type), row.name,
              status_name(log_type_is_set(type)), level_name(row.level));
  }
  return buffer;
}
