#include "kest/util.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include "util/uncancelled.h"

namespace {

constexpr int32_t UNREADABLE = -1; // /proc itself
constexpr int32_t NOT_FOUND = -2;

// read_pid returns whether an entry of /proc is a process, and stores its number.
bool read_pid(const char *entry, long &pid) {
  char *end = nullptr;
  pid = strtol(entry, &end, 10);
  return end != entry && *end == '\0';
}

// read_line reads the first line of a file with its line feed, cut to what fits. It returns false
// if there is none.
bool read_line(const char *path, std::span<char> line) {
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) {
    return false;
  }
  const ssize_t size = read(file, line.data(), line.size() - 1);
  close(file);
  if (size <= 0) {
    return false;
  }
  line[static_cast<size_t>(size)] = '\0';
  if (char *const feed = strchr(line.data(), '\n'); feed != nullptr) {
    feed[1] = '\0';
  }
  return true;
}

// runs_under returns whether the command of a process contains `name`. Its arguments come after a
// NUL, so they are ignored.
bool runs_under(long pid, const char *name) {
  char text[512]; // the path, then the line
  snprintf(text, sizeof text, "/proc/%ld/cmdline", pid);
  return read_line(text, text) && strstr(text, name) != nullptr;
}

} // namespace

int32_t kest_get_pid_by_name(const char *name) {
  const uncancelled whole;
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
