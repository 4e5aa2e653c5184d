#include "kest/log.h"

#include <cstdio>

#include "bench/inputs.h"
#include "bench/job.h"
#include "tests/support/temporary_folder.h"

namespace {

// open_log has the library log to a file, as a host does. log_level stays 0, so that nothing else
// writes there.
void open_log() {
  static const temporary_folder folder;
  snprintf(LOG_FILE, sizeof "/tmp/kest_XXXXXX/log", "%s/log", folder.path.c_str());
  LOG_FILE_MAX_SIZE = 65536;
}

std::function<void()> log_text(size_t size) {
  return [text = repeated(ENGLISH, size)] {
    kest_log(KEST_LOG_ERROR, "%s", text.c_str());
  };
}

} // namespace

void measure_log(measured &out) {
  open_log();
  out.jobs.push_back({"log a line, mask 0", [] {
                        kest_log(0, "%s alphabet: %d\n", "name", 1);
                      }});
  out.jobs.push_back({"log a line to a file", [] {
                        kest_log(KEST_LOG_ERROR, "%s alphabet: %d\n", "name", 1);
                      }});
  out.curves.push_back({"log a text to a file", "bytes", steps(2047, 64), log_text});
}
