#include "kest/util.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dirent.h>

namespace {

constexpr int32_t UNREADABLE = -1; // /proc itself
constexpr int32_t NOT_FOUND = -2;

// read_pid stores the number that an entry of /proc is, and returns whether it is one: a process.
bool read_pid(const char *entry, long &pid) {
  char *end = nullptr;
  pid = strtol(entry, &end, 10);
  return end != entry && *end == '\0';
}

// runs_under tells whether `name` is part of the name that a process was started under. Its
// arguments stand behind a NUL, so that they do not count.
bool runs_under(long pid, const char *name) {
  char text[512]; // the path, then the line
  snprintf(text, sizeof text, "/proc/%ld/cmdline", pid);
  FILE *file = fopen(text, "r");
  if (file == nullptr) {
    return false;
  }
  const bool found = fgets(text, sizeof text, file) != nullptr && strstr(text, name) != nullptr;
  fclose(file);
  return found;
}

} // namespace

int32_t kest_get_pid_by_name(const char *name) {
  DIR *proc = opendir("/proc");
  if (proc == nullptr) {
    return UNREADABLE;
  }
  int32_t result = NOT_FOUND;
  // NOLINTNEXTLINE(concurrency-mt-unsafe): the directory is open for this call alone
  while (const dirent *entry = readdir(proc)) {
    long pid = 0;
    if (read_pid(entry->d_name, pid) && runs_under(pid, name)) {
      result = static_cast<int32_t>(pid);
      break;
    }
  }
  closedir(proc);
  return result;
}
