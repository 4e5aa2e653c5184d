#include "kest/log.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>

#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr size_t TEXT_SIZE = 2048;  // a longer line is cut to one byte less
constexpr size_t PREFIX_SIZE = 512; // of the time and the process id
constexpr size_t ROTATED_NAME_SIZE = 256;
constexpr size_t LOG_FILE_MAX_LEN = ROTATED_NAME_SIZE - sizeof ".1";

std::atomic<int32_t> kest_log_enabled{1};

// Guards the log file from the rotation test to the close, so that records do not mix and only one
// thread rotates. No other lock is taken under it.
pthread_mutex_t kest_log_mutex = PTHREAD_MUTEX_INITIALIZER;

// rotate makes room by renaming a file that has passed the limit; an earlier one is replaced.
void rotate() {
  struct stat status;
  if (stat(LOG_FILE, &status) != 0 || static_cast<uint32_t>(status.st_size) <= LOG_FILE_MAX_SIZE) {
    return;
  }
  char rotated[ROTATED_NAME_SIZE];
  snprintf(rotated, sizeof rotated, "%s.1", LOG_FILE);
  rename(LOG_FILE, rotated);
}

void format_prefix(char (&prefix)[PREFIX_SIZE]) {
  const time_t now = time(nullptr);
  struct tm local = {};
  tzset(); // localtime_r alone may miss a change of TZ
  localtime_r(&now, &local);
  snprintf(prefix, sizeof prefix, "%04d/%02d/%02d %02d:%02d:%02d, pid:%5d, ", local.tm_year + 1900,
           local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec,
           static_cast<int>(getpid()));
}

// complement inverts the bits of each byte. A byte 0xFF becomes a terminator: the text ends there.
void complement(char *text) {
  for (; *text != '\0'; ++text) {
    *text = static_cast<char>(~*text);
  }
}

void append_record(char *text) {
  char prefix[PREFIX_SIZE];
  format_prefix(prefix);
  FILE *file = fopen(LOG_FILE, "at");
  if (file == nullptr) {
    return;
  }
  complement(text);
  complement(prefix);
  fprintf(file, "%s%s\n", prefix, text);
  fclose(file);
}

// log_line has a frame of its own, for its buffers: a line that is dropped needs none.
[[gnu::noinline, gnu::format(printf, 2, 0)]] void log_line(uint32_t mask, const char *format,
                                                           va_list arguments) {
  char text[TEXT_SIZE];
  text[0] = '\0';
  vsnprintf(text, sizeof text, format, arguments);
  if ((mask & KEST_LOG_CONSOLE) != 0) {
    printf("%s", text);
  }
  if (LOG_FILE[0] == '\0') {
    return;
  }
  pthread_mutex_lock(&kest_log_mutex);
  // The rotated name of a longer path fits no buffer: such a path counts as one that can't be
  // opened.
  if (strnlen(LOG_FILE, LOG_FILE_MAX_LEN + 1) <= LOG_FILE_MAX_LEN) {
    rotate();
    append_record(text);
  }
  pthread_mutex_unlock(&kest_log_mutex);
}

} // namespace

void kest_log(uint32_t mask, const char *format, ...) {
  if (kest_log_enabled.load(std::memory_order_relaxed) == 0 || mask == 0) {
    return;
  }
  va_list arguments;
  va_start(arguments, format);
  log_line(mask, format, arguments);
  va_end(arguments);
}

void orba_kest_log(int32_t enable) {
  kest_log_enabled.store(enable, std::memory_order_relaxed);
}

void kest_format_log_msg(char *s, int32_t maxlen, const char *format, ...) {
  if (s == nullptr || maxlen <= 0) {
    return;
  }
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(s, static_cast<size_t>(maxlen), format, arguments);
  va_end(arguments);
}

void kest_print_log_msg(const char *msg) {
  fprintf(stderr, "%s\n", msg);
}
