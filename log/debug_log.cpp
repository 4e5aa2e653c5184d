#include "log/debug_log.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>

#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include "log/over_fork.h"
#include "log/unnoticed.h"

namespace {

constexpr size_t TEXT_SIZE = 2048; // a longer line is cut to one byte less
constexpr size_t PREFIX_SIZE = 64; // of the time and the process id: at most 44 bytes
constexpr size_t ROTATED_NAME_SIZE = 256;
constexpr size_t LOG_FILE_MAX_LEN = ROTATED_NAME_SIZE - sizeof ".1";

std::atomic<int32_t> kest_log_enabled{1};

// Guards the log file from the check of its size to the close: lines do not mix, and one thread
// rotates. No other lock of the library is taken under it.
pthread_mutex_t kest_log_mutex = PTHREAD_MUTEX_INITIALIZER;

[[gnu::constructor(KEST_FIRST)]] void keep_over_fork() {
  kest_hold_over_fork<kest_log_mutex>();
}

// rotate renames a file larger than the limit. It replaces an earlier one.
void rotate() {
  struct stat status;
  if (stat(LOG_FILE, &status) != 0 || static_cast<uint32_t>(status.st_size) <= LOG_FILE_MAX_SIZE) {
    return;
  }
  char rotated[ROTATED_NAME_SIZE];
  snprintf(rotated, sizeof rotated, "%s.1", LOG_FILE);
  rename(LOG_FILE, rotated);
}

// The text of a line, with room for the prefix before it.
using line_buffer = std::array<char, PREFIX_SIZE + TEXT_SIZE>;

// format_prefix writes the prefix to the start of `line` and returns its length.
size_t format_prefix(line_buffer &line) {
  const time_t now = time(nullptr);
  struct tm local = {};
  tzset(); // localtime_r alone may miss a change of TZ
  localtime_r(&now, &local);
  snprintf(line.data(), PREFIX_SIZE, "%04d/%02d/%02d %02d:%02d:%02d, pid:%5d, ",
           local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
           local.tm_sec, static_cast<int>(getpid()));
  return strlen(line.data());
}

// append_line appends by one write, so that lines of several processes do not mix. A byte 0xFF ends
// the text: its complement is a terminator.
void append_line(line_buffer &line) {
  const size_t prefix = format_prefix(line);
  const int file = open(LOG_FILE, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  if (file < 0) {
    return;
  }
  char *const start = line.data() + PREFIX_SIZE - prefix;
  memmove(start, line.data(), prefix);
  char *const end = start + strcspn(start, "\xFF");
  std::transform(start, end, start, [](char c) { return static_cast<char>(~c); });
  *end = '\n';
  [[maybe_unused]] const ssize_t written = write(file, start, static_cast<size_t>(end + 1 - start));
  close(file);
}

bool is_dropped(uint32_t mask) {
  return kest_log_enabled.load(std::memory_order_relaxed) == 0 || mask == 0;
}

// log_line is not inlined: a dropped line needs no buffer on the stack.
[[gnu::noinline, gnu::format(printf, 2, 0)]] void log_line(uint32_t mask, const char *format,
                                                           va_list arguments) {
  const unnoticed caller;
  line_buffer line;
  char *const text = line.data() + PREFIX_SIZE;
  text[0] = '\0';
  vsnprintf(text, TEXT_SIZE, format, arguments);
  if ((mask & KEST_LOG_CONSOLE) != 0) {
    printf("%s", text);
  }
  if (LOG_FILE[0] == '\0') {
    return;
  }
  pthread_mutex_lock(&kest_log_mutex);
  // A longer path has no rotated name, so it counts as one that can't be opened.
  if (strnlen(LOG_FILE, LOG_FILE_MAX_LEN + 1) <= LOG_FILE_MAX_LEN) {
    rotate();
    append_line(line);
  }
  pthread_mutex_unlock(&kest_log_mutex);
}

} // namespace

void kest_log(uint32_t mask, const char *format, ...) {
  if (is_dropped(mask)) {
    return;
  }
  va_list arguments;
  va_start(arguments, format);
  log_line(mask, format, arguments);
  va_end(arguments);
}

void kest_log_error(const char *format, ...) {
  if (is_dropped(log_level & KEST_LOG_ERROR)) {
    return;
  }
  va_list arguments;
  va_start(arguments, format);
  log_line(KEST_LOG_ERROR, format, arguments);
  va_end(arguments);
}

void kest_log_debug(const char *format, ...) {
  if (is_dropped(log_level & KEST_LOG_DEBUG)) {
    return;
  }
  va_list arguments;
  va_start(arguments, format);
  log_line(KEST_LOG_DEBUG, format, arguments);
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
  const uncancelled whole;
  fprintf(stderr, "%s\n", msg);
}
