#include "tests/support/debug_log.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include <unistd.h>

debug_log::debug_log(uint32_t level, uint32_t max_size) {
  char name[] = "/tmp/kest_log_XXXXXX";
  folder_ = mkdtemp(name);
  strcpy(LOG_FILE, (folder_ + "/log").c_str());
  LOG_FILE_MAX_SIZE = max_size;
  log_level = level;
}

debug_log::~debug_log() {
  LOG_FILE[0] = '\0';
  log_level = 0;
  std::filesystem::remove_all(folder_);
}

std::string debug_log::folder() const {
  return folder_;
}

std::string debug_log::raw(const char *suffix) const {
  std::ifstream file(folder_ + "/log" + suffix, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

void debug_log::write(const std::string &bytes) const {
  std::ofstream(folder_ + "/log", std::ios::binary) << bytes;
}

log_lines debug_log::lines(const char *suffix) const {
  static const std::regex shape(R"(\d{4}/\d\d/\d\d \d\d:\d\d:\d\d, pid: *(\d+), ([^]*))");
  log_lines lines;
  std::istringstream file(raw(suffix));
  for (std::string record; std::getline(file, record);) {
    for (char &c : record) {
      c = static_cast<char>(~c);
    }
    std::smatch parts;
    if (file.eof() || !std::regex_match(record, parts, shape) ||
        parts[1] != std::to_string(getpid())) {
      lines.push_back("BROKEN");
      continue;
    }
    std::string text = parts[2];
    if (text.ends_with('\n')) {
      text.pop_back();
    }
    lines.push_back(text);
  }
  return lines;
}
