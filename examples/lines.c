#include "lines.h"

#include <kest/kest.h>
#include <stdio.h>
#include <string.h>

enum { MAX_LENGTH = 2504 /* of a cell broadcast message, the longest that there is */ };

long read_lines(int (*take)(const char *line)) {
  char line[MAX_LENGTH + 1];
  long refused = 0;
  for (long number = 1;; number++) {
    size_t length = 0;
    int c = getchar();
    for (; c != EOF && c != '\n'; c = getchar()) {
      if (c != '\r' && length < sizeof line) { /* modems end their lines with both */
        line[length++] = (char)(c != '\0' ? c : '?');
      }
    }
    if (c == EOF && length == 0) {
      return refused;
    }
    int is_too_long = length == sizeof line;
    line[is_too_long ? 0 : length] = '\0';
    int is_passed_over = length == 0 || line[0] == '+';
    if (is_too_long || (!is_passed_over && take(line) == 0)) {
      printf("line %ld is refused\n", number);
      refused++;
    }
  }
}

uint16_t octets_of(const char *hex, uint8_t *octets, size_t size) {
  size_t digits = strlen(hex);
  if (strspn(hex, "0123456789ABCDEFabcdef") != digits || digits % 2 != 0 || digits / 2 > size) {
    return 0;
  }
  return kest_hexstring_to_binary(hex, octets, (uint16_t)size);
}

/* Takes the 16-bit unit at `*at`. The decoders give forms of one to three bytes. */
static uint16_t next_unit(const uint8_t *text, size_t size, size_t *at) {
  unsigned unit = text[(*at)++];
  unsigned more = unit < 0xC0 ? 0 : unit < 0xE0 ? 1 : 2;
  unit &= more == 0 ? 0x7F : more == 1 ? 0x1F : 0x0F;
  for (; more > 0 && *at < size; more--) {
    unit = unit << 6 | (text[(*at)++] & 0x3F);
  }
  return (uint16_t)unit;
}

void print_text(const uint8_t *text, size_t size) {
  while (size > 0 && text[size - 1] <= ' ') {
    size--;
  }
  for (size_t at = 0; at < size;) {
    uint16_t units[2] = {next_unit(text, size, &at), 0};
    uint16_t octets = sizeof units[0];
    char character[2 * 3 + 1];
    if ((units[0] & 0xF800) == 0xD800) {
      size_t behind = at;
      if (units[0] < 0xDC00 && at < size) {
        units[1] = next_unit(text, size, &behind);
      }
      if ((units[1] & 0xFC00) == 0xDC00) {
        octets = sizeof units;
        at = behind;
      } else {
        units[0] = 0xFFFD; /* one without its partner */
      }
    } else if (units[0] < 0x20 || (units[0] >= 0x7F && units[0] < 0xA0)) {
      units[0] = ' ';
    }
    kest_convert_ucs2_to_utf8(units, octets, character);
    fputs(character, stdout);
  }
}
