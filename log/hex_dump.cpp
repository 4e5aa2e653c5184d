#include "kest/log.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <span>

#include "log/unnoticed.h"

namespace {

constexpr size_t OCTETS_PER_LINE = 16;
constexpr size_t OCTETS_PER_GROUP = 4;
constexpr size_t HEX_COLUMN = 5;
constexpr size_t TEXT_COLUMN = 43;
constexpr size_t LINE_SIZE = TEXT_COLUMN + OCTETS_PER_LINE + 1; // with its terminator

// format_line writes up to 16 octets. Each has fixed columns, so that short lines align with full
// ones.
void format_line(std::span<const uint8_t> octets, char (&line)[LINE_SIZE]) {
  constexpr char DIGITS[] = "0123456789ABCDEF";
  memset(line, ' ', TEXT_COLUMN);
  for (size_t i = 0; i < octets.size(); ++i) {
    const uint8_t octet = octets[i];
    char *digits = line + HEX_COLUMN + 2 * i + i / OCTETS_PER_GROUP;
    digits[0] = DIGITS[octet >> 4];
    digits[1] = DIGITS[octet & 0xF];
    line[TEXT_COLUMN + i] = isprint(octet) != 0 ? static_cast<char>(octet) : '.';
  }
  line[TEXT_COLUMN + octets.size()] = '\0';
}

// dump writes to the debug log with the mask in `log_mask`, or to standard output if that is null.
void dump(const uint8_t *data, int32_t length, const uint32_t *log_mask) {
  std::span<const uint8_t> rest(data, static_cast<size_t>(std::max(length, 0)));
  while (!rest.empty()) {
    const size_t count = std::min(rest.size(), OCTETS_PER_LINE);
    char line[LINE_SIZE];
    format_line(rest.first(count), line);
    if (log_mask != nullptr) {
      kest_log(*log_mask, "%s\n", line);
    } else {
      puts(line);
    }
    rest = rest.subspan(count);
  }
}

} // namespace

void kest_print_hex(const char *title, const uint8_t *data, int32_t length) {
  const unnoticed caller;
  printf("%s (%3d)\n", title, length);
  dump(data, length, nullptr);
}

void orba_kest_print_hex(const char *title, const uint8_t *data, int32_t length) {
  kest_print_hex(title, data, length);
}

void fnPrintHex(uint32_t mask, int32_t number, const char *title, const uint8_t *data,
                int32_t length) {
  const uncancelled whole;
  kest_log(mask, "%d: %s (%3d)\n", number, title, length);
  dump(data, length, &mask);
}
