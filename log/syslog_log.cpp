#include "kest/log.h"

#include <cstdarg>
#include <cstdio>

#include <pthread.h>
#include <syslog.h>

int32_t log_priority = LOG_INFO;
int32_t verbose = 0;

namespace {

// Guards the call of `vsyslog`. No other lock is taken under it. Ready also before logging_init.
pthread_mutex_t log_mutex = PTHREAD_MUTEX_INITIALIZER;

} // namespace

void logging_init(const char *ident) {
  pthread_mutex_init(&log_mutex, nullptr);
  openlog(ident, LOG_PID | LOG_CONS, LOG_DAEMON);
}

void logging_close() {
  closelog();
}

void log_message(int32_t pri, const char *fmt, ...) {
  if (log_priority < pri) {
    return;
  }
  va_list arguments;
  va_start(arguments, fmt);
  pthread_mutex_lock(&log_mutex);
  vsyslog(pri, fmt, arguments);
  pthread_mutex_unlock(&log_mutex);
  va_end(arguments);
  if (verbose != 0) {
    va_start(arguments, fmt);
    vprintf(fmt, arguments);
    va_end(arguments);
  }
}
