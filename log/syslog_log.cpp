#include "kest/log.h"

#include <cstdarg>
#include <cstdio>

#include <syslog.h>

#include "log/over_fork.h"
#include "log/system_log.h"
#include "log/unnoticed.h"

int32_t log_priority = LOG_INFO;
int32_t verbose = 0;

namespace {

// Ready at load: logging_init must not touch it, for other threads may hold it.
pthread_mutex_t log_mutex = PTHREAD_MUTEX_INITIALIZER;

[[gnu::constructor(KEST_FIRST)]] void keep_over_fork() {
  kest_hold_over_fork<log_mutex>();
}

} // namespace

void system_log_lock::lock() {
  pthread_mutex_lock(&log_mutex);
}

void system_log_lock::unlock() {
  pthread_mutex_unlock(&log_mutex);
}

void logging_init(const char *ident) {
  const system_log_lock lock;
  openlog(ident, LOG_PID | LOG_CONS, LOG_DAEMON);
}

void logging_close() {
  const system_log_lock lock;
  closelog();
}

void log_message(int32_t pri, const char *fmt, ...) {
  if (log_priority < pri) {
    return;
  }
  const unnoticed caller;
  va_list arguments;
  va_start(arguments, fmt);
  {
    const system_log_lock lock;
    vsyslog(pri, fmt, arguments);
  }
  va_end(arguments);
  if (verbose != 0) {
    errno = caller.reason; // `%m` means the same in both
    va_start(arguments, fmt);
    vprintf(fmt, arguments);
    va_end(arguments);
  }
}
