#include "kest/util.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "util/uncancelled.h"

int32_t kest_remove_quotation_mark(const char *str, char **out) {
  if (out == nullptr) {
    return 0;
  }
  *out = nullptr;
  if (str == nullptr) {
    return 0;
  }
  const uncancelled whole;
  const size_t length = strlen(str);
  printf("Input string length: %d\n", static_cast<int>(length));
  const char *opening = str + strspn(str, " ");
  if (length == 0 || (*opening != '"' && *opening != '\0')) {
    return 0;
  }
  // The opening quote is not copied, which leaves room for the terminator.
  auto *text = static_cast<char *>(malloc(length));
  if (text == nullptr) {
    return 0;
  }
  const char *quotation = *opening == '"' ? opening + 1 : opening;
  const size_t count = strcspn(quotation, "\"");
  memcpy(text, quotation, count);
  if (quotation[count] == '"') {
    text[count] = '\0';
    printf("Extracted string: %s\n", text);
  }
  *out = text;
  return static_cast<int32_t>(count);
}

int32_t convert_2s_complement_to_int(uint32_t value) {
  constexpr int32_t FIELD_SIZE = 64; // of six bits
  const int32_t field = static_cast<uint8_t>(value);
  return field < FIELD_SIZE / 2 ? field : -((FIELD_SIZE * 4 - field) % FIELD_SIZE);
}
