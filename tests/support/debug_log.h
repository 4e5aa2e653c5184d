// tests/support/debug_log.h: the debug log in a test's hands.
#pragma once
#include <string>
#include <vector>

#include "kest/log.h"
#include "tests/support/temporary_folder.h"

constexpr size_t LOG_FILE_CAPACITY = 512; // more than the library takes

// While it lives, the library logs to a file of its own in a new folder.
class debug_log {
public:
  explicit debug_log(uint32_t level = KEST_LOG_DEBUG | KEST_LOG_ERROR,
                     uint32_t max_size = UINT32_MAX);
  ~debug_log();
  debug_log(const debug_log &) = delete;
  debug_log &operator=(const debug_log &) = delete;

  std::string folder() const;
  std::string raw(const char *suffix = "") const; // the file's bytes; "" if there is none
  void write(const std::string &bytes) const;     // makes the file anew

  // The texts of the records, each without its own line feed. A record with a broken prefix or end
  // comes out as "BROKEN".
  std::vector<std::string> lines(const char *suffix = "") const;

private:
  temporary_folder folder_;
};

using log_lines = std::vector<std::string>;

constexpr uint32_t LOG_LEVELS[] = {KEST_LOG_DEBUG | KEST_LOG_ERROR, KEST_LOG_DEBUG, KEST_LOG_ERROR,
                                   0};

// at_level is what is left of lines with the bits of `level` in log_level. What is refused is an
// error, everything else a trace.
log_lines at_level(log_lines lines, uint32_t level);
