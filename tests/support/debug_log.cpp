#include "tests/support/debug_log.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>

#include <unistd.h>

debug_log::debug_log(uint32_t level, uint32_t max_size) {
  strcpy(LOG_FILE, (folder() + "/log").c_str());
  LOG_FILE_MAX_SIZE = max_size;
  log_level = level;
}

debug_log::~debug_log() {
  LOG_FILE[0] = '\0';
  log_level = 0;
}

std::string debug_log::folder() const {
  return folder_.path;
}

std::string debug_log::raw(const char *suffix) const {
  std::ifstream file(folder() + "/log" + suffix, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

void debug_log::write(const std::string &bytes) const {
  std::ofstream(folder() + "/log", std::ios::binary) << bytes;
}

log_lines debug_log::lines(const char *suffix) const {
  log_lines lines;
  std::istringstream file(raw(suffix));
  for (std::string record; std::getline(file, record);) {
    for (char &c : record) {
      c = static_cast<char>(~c);
    }
    char pid[11] = "";
    int size = 0;
    sscanf(record.c_str(), "%*4d/%*2d/%*2d %*2d:%*2d:%*2d, pid: %10[0-9],%n", pid, &size);
    const bool whole = size > 0 && pid == std::to_string(getpid()) && !file.eof();
    record.erase(0, static_cast<size_t>(size) + 1); // and a blank
    if (record.ends_with('\n')) {
      record.pop_back();
    }
    lines.push_back(whole ? record : "BROKEN");
  }
  return lines;
}

log_lines at_level(log_lines lines, uint32_t level) {
  std::erase_if(lines, [level](const std::string &line) {
    const bool error = line.ends_with("!!!") || line.find(" ptr NULL") != std::string::npos ||
                       line.find(" overflow ") != std::string::npos;
    return (level & (error ? KEST_LOG_ERROR : KEST_LOG_DEBUG)) == 0;
  });
  return lines;
}
