#include "sms/decode/user_data_header.h"

#include <array>
#include <cstddef>

#include "kest/log.h"

// The host's record, on 32-bit and 64-bit targets alike.
static_assert(sizeof(kest_sms_udh_info) == 10 && offsetof(kest_sms_udh_info, reference) == 2 &&
              offsetof(kest_sms_udh_info, total) == 4 &&
              offsetof(kest_sms_udh_info, sequence) == 5 &&
              offsetof(kest_sms_udh_info, dest_port) == 6 &&
              offsetof(kest_sms_udh_info, orig_port) == 8);

namespace {

constexpr const char *NAME = "kest_decode_user_data_header";
constexpr int MAX_ELEMENTS = 7;
constexpr size_t INDEX_END = 256;

// How the length octet of an element (IEDL) is tested against the bound of its row.
enum class test : uint8_t { AT_LEAST, BELOW, EXACTLY };

enum class content : uint8_t {
  SKIPPED,
  CONCATENATED_8BIT,
  CONCATENATED_16BIT,
  PORTS_8BIT,
  PORTS_16BIT,
  PICTURE
};

// What the walk does with an information element. Those that are kept, and those of one size, are
// stepped over by `step`, the others by their length octet.
struct element {
  test length_test;
  uint8_t bound;
  uint8_t step; // 0: IEDL
  content kept = content::SKIPPED;
};

struct element_row {
  uint8_t iei;
  element what;
};

// TS 23.040, clause 9.2.3.24.
constexpr element_row ELEMENT_ROWS[] = {
    {0x00, {test::AT_LEAST, 3, 3, content::CONCATENATED_8BIT}},
    {0x08, {test::AT_LEAST, 4, 4, content::CONCATENATED_16BIT}},
    {0x04, {test::AT_LEAST, 2, 2, content::PORTS_8BIT}},
    {0x05, {test::AT_LEAST, 4, 4, content::PORTS_16BIT}},
    {0x01, {test::AT_LEAST, 2, 0}},                  // special SMS message indication
    {0x0B, {test::AT_LEAST, 2, 0}},                  // predefined sound
    {0x0A, {test::AT_LEAST, 3, 0}},                  // text formatting
    {0x0C, {test::AT_LEAST, 0, 0}},                  // user defined sound: any length
    {0x14, {test::AT_LEAST, 0, 0}},                  // extended object: any length
    {0x0D, {test::EXACTLY, 2, 2}},                   // predefined animation
    {0x0E, {test::EXACTLY, 129, 129}},               // large animation
    {0x10, {test::EXACTLY, 129, 129}},               // large picture
    {0x0F, {test::EXACTLY, 33, 33}},                 // small animation
    {0x11, {test::EXACTLY, 33, 33}},                 // small picture
    {0x12, {test::BELOW, 138, 0, content::PICTURE}}, // variable picture
    {0x13, {test::EXACTLY, 1, 1}},                   // user prompt indicator
    {0x20, {test::EXACTLY, 1, 1}},                   // RFC 822 e-mail header
};
constexpr element UNKNOWN_ELEMENT = {test::BELOW, 227, 0};

// The rows by their identifiers.
constexpr size_t ELEMENT_COUNT = 0x21; // one more than the highest of them
constexpr std::array<element, ELEMENT_COUNT> ELEMENTS = [] {
  std::array<element, ELEMENT_COUNT> elements = {};
  elements.fill(UNKNOWN_ELEMENT);
  for (const element_row &row : ELEMENT_ROWS) {
    elements[row.iei] = row.what;
  }
  return elements;
}();

element element_of(uint8_t iei) {
  return iei < ELEMENTS.size() ? ELEMENTS[iei] : UNKNOWN_ELEMENT;
}

bool length_fits(const element &row, uint8_t length) {
  switch (row.length_test) {
  case test::AT_LEAST:
    return length >= row.bound;
  case test::BELOW:
    return length < row.bound;
  default:
    return length == row.bound;
  }
}

// What a walk fills.
struct header_targets {
  kest_sms_udh_info &udh;
  uint32_t &no_concat;
};

[[nodiscard]] bool keep_concatenation(uint16_t reference, uint8_t total, uint8_t sequence,
                                      header_targets out) {
  if (total == 0 || sequence == 0 || sequence > total) {
    kest_log(log_level & KEST_LOG_ERROR, "%s UDH Header out of bound max messages !!!\n", NAME);
    return false;
  }
  out.udh.reference = reference;
  out.udh.total = total;
  out.udh.sequence = sequence;
  out.no_concat = 0;
  return true;
}

[[nodiscard]] bool picture_fits(uint8_t length, unsigned width, unsigned height) {
  if (static_cast<int>(length) - 3 != static_cast<int>(width * height)) {
    kest_log(log_level & KEST_LOG_ERROR,
             "%s UDH Header pic size value mismatch with heigt and weight !!!\n", NAME);
    return false;
  }
  return true;
}

uint16_t pair(const octet_reader &data, size_t offset) {
  return static_cast<uint16_t>(peek_octet(data, offset) << 8 | peek_octet(data, offset + 1));
}

// keep_element stores what is kept of the element whose data stands at `data`, and returns false if
// its values are out of bounds.
[[nodiscard]] bool keep_element(const element &row, uint8_t length, const octet_reader &data,
                                header_targets out) {
  switch (row.kept) {
  case content::CONCATENATED_8BIT:
    return keep_concatenation(peek_octet(data, 0), peek_octet(data, 1), peek_octet(data, 2), out);
  case content::CONCATENATED_16BIT:
    return keep_concatenation(pair(data, 0), peek_octet(data, 2), peek_octet(data, 3), out);
  case content::PORTS_8BIT:
    out.udh.dest_port = peek_octet(data, 0);
    out.udh.orig_port = peek_octet(data, 1);
    return true;
  case content::PORTS_16BIT:
    out.udh.dest_port = pair(data, 0);
    out.udh.orig_port = pair(data, 2);
    return true;
  case content::PICTURE:
    return picture_fits(length, peek_octet(data, 1), peek_octet(data, 2));
  default:
    return true;
  }
}

// walk_elements reads the elements of a header of `header_length` octets. The index counts from the
// length octet, and can pass the header's end: the last element may claim more than is there.
void walk_elements(octet_reader data, size_t header_length, header_targets out) {
  size_t index = 1;
  for (int count = 0; index < header_length && count < MAX_ELEMENTS; ++count) {
    const uint8_t iei = read_octet(data);
    const uint8_t length = read_octet(data);
    index += 2;
    out.udh.iei = iei;
    const element row = element_of(iei);
    if (!length_fits(row, length)) {
      kest_log(log_level & KEST_LOG_ERROR, "%s UDH invalid data length = %d !!!\n", NAME, length);
      return;
    }
    if (!keep_element(row, length, data, out)) {
      return;
    }
    const size_t step = row.step != 0 ? row.step : length;
    skip_octets(data, step);
    index += step;
    if (index >= INDEX_END) {
      kest_log(log_level & KEST_LOG_ERROR, "%s decoded has exceeded UDHL value of %d !!!\n", NAME,
               static_cast<int>(header_length));
      return;
    }
  }
}

} // namespace

uint32_t kest_decode_user_data_header(octet_reader data, kest_sms_udh_info *udh,
                                      uint32_t *udh_no_concat) {
  if (data.octets.data() == nullptr) {
    kest_log(log_level & KEST_LOG_ERROR, "%s data_ptr null pointer !!!\n", NAME);
    return 0;
  }
  const uint8_t header_length = read_octet(data);
  if (udh == nullptr) {
    kest_log(log_level & KEST_LOG_ERROR,
             "%s udh_ptr null pointer, skip user data header parsing !!!\n", NAME);
    return header_length;
  }
  *udh_no_concat = 1;
  walk_elements(data, header_length, {*udh, *udh_no_concat});
  return header_length;
}
