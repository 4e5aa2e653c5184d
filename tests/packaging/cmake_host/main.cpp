// A host in C++ that knows the library from its CMake package alone.
#include <cstdio>
#include <kest/kest.h>

uint32_t log_level = 0; // what every host defines
char LOG_FILE[] = "";
uint32_t LOG_FILE_MAX_SIZE = 0;
char LOG_FILE_COMPRESSED[] = "";

int main() {
  const uint8_t packed[] = {0xE8, 0x32, 0x9B, 0xFD, 0x06};
  char text[2 * sizeof packed * 8 / 7 + 1];
  std::printf("%u: ", kest_decode_packed_7bit_gsm_string(text, packed, sizeof packed));
  std::puts(text);
}
