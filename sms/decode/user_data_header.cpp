#include "sms/decode/user_data_header.h"

#include <cstddef>

#include "log/debug_log.h"
#include "sms/tpdu.h"

namespace {

constexpr const char *NAME = "kest_decode_user_data_header";
constexpr int MAX_ELEMENTS = 7;
constexpr size_t INDEX_END = 256;

// How the length octet of an element (IEDL) is tested against the bound of its row.
enum class bound : uint8_t { AT_LEAST, BELOW, EXACTLY };

// What the walk does with an information element: whether `length` fits, and how many octets of its
// data are skipped: all, or `step`.
struct element {
  uint8_t iei;
  bound kind;
  uint8_t length;
  uint8_t step; // 0: IEDL
};

// TS 23.040, clause 9.2.3.24.
constexpr uint8_t IEI_PORTS_8BIT = 0x04;
constexpr uint8_t IEI_PORTS_16BIT = 0x05;
constexpr uint8_t IEI_VARIABLE_PICTURE = 0x12;
constexpr element ELEMENTS[] = {
    {IEI_CONCATENATED_8BIT, bound::AT_LEAST, 3, 3},
    {IEI_CONCATENATED_16BIT, bound::AT_LEAST, 4, 4},
    {IEI_PORTS_8BIT, bound::AT_LEAST, 2, 2},
    {IEI_PORTS_16BIT, bound::AT_LEAST, 4, 4},
    {0x01, bound::AT_LEAST, 2, 0},    // special SMS message indication
    {0x0B, bound::AT_LEAST, 2, 0},    // predefined sound
    {0x0A, bound::AT_LEAST, 3, 0},    // text formatting
    {0x0C, bound::AT_LEAST, 0, 0},    // user defined sound: any length
    {0x14, bound::AT_LEAST, 0, 0},    // extended object: any length
    {0x0D, bound::EXACTLY, 2, 2},     // predefined animation
    {0x0E, bound::EXACTLY, 129, 129}, // large animation
    {0x10, bound::EXACTLY, 129, 129}, // large picture
    {0x0F, bound::EXACTLY, 33, 33},   // small animation
    {0x11, bound::EXACTLY, 33, 33},   // small picture
    {IEI_VARIABLE_PICTURE, bound::BELOW, 138, 0},
    {0x13, bound::EXACTLY, 1, 1}, // user prompt indicator
    {0x20, bound::EXACTLY, 1, 1}, // RFC 822 e-mail header
};
constexpr element UNKNOWN_ELEMENT = {0, bound::BELOW, 227, 0};

const element &element_of(uint8_t iei) {
  for (const element &row : ELEMENTS) {
    if (row.iei == iei) {
      return row;
    }
  }
  return UNKNOWN_ELEMENT;
}

bool length_fits(const element &row, uint8_t iedl) {
  switch (row.kind) {
  case bound::AT_LEAST:
    return iedl >= row.length;
  case bound::BELOW:
    return iedl < row.length;
  default:
    return iedl == row.length;
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
    kest_log_error("%s UDH Header out of bound max messages !!!\n", NAME);
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
    kest_log_error("%s UDH Header pic size value mismatch with heigt and weight !!!\n", NAME);
    return false;
  }
  return true;
}

// keep_element stores what is kept of the element whose data `in` begins with. It returns false if
// its values are out of bounds.
[[nodiscard]] bool keep_element(uint8_t iei, uint8_t iedl, octet_reader in, header_targets out) {
  switch (iei) {
  case IEI_CONCATENATED_8BIT:
  case IEI_CONCATENATED_16BIT: {
    const uint16_t reference = iei == IEI_CONCATENATED_8BIT ? in.u8() : in.u16();
    const uint8_t total = in.u8();
    return keep_concatenation(reference, total, in.u8(), out);
  }
  case IEI_PORTS_8BIT:
    out.udh.dest_port = in.u8();
    out.udh.orig_port = in.u8();
    return true;
  case IEI_PORTS_16BIT:
    out.udh.dest_port = in.u16();
    out.udh.orig_port = in.u16();
    return true;
  case IEI_VARIABLE_PICTURE: {
    in.skip(1);
    const unsigned width = in.u8();
    return picture_fits(iedl, width, in.u8());
  }
  default:
    return true;
  }
}

// walk_elements reads the elements of a header of `udhl` octets. The index counts from the length
// octet, and can pass the header's end: the last element may claim more than is there.
void walk_elements(octet_reader in, size_t udhl, header_targets out) {
  size_t index = 1;
  for (int count = 0; index < udhl && count < MAX_ELEMENTS; ++count) {
    const uint8_t iei = in.u8();
    const uint8_t iedl = in.u8();
    out.udh.iei = iei;
    const element &row = element_of(iei);
    if (!length_fits(row, iedl)) {
      kest_log_error("%s UDH invalid data length = %d !!!\n", NAME, iedl);
      return;
    }
    if (!keep_element(iei, iedl, in, out)) {
      return;
    }
    const size_t step = row.step != 0 ? row.step : iedl;
    in.skip(step);
    index += 2 + step;
    if (index >= INDEX_END) {
      kest_log_error("%s decoded has exceeded UDHL value of %d !!!\n", NAME,
                     static_cast<int>(udhl));
      return;
    }
  }
}

} // namespace

uint32_t kest_decode_user_data_header(octet_reader &in, kest_sms_udh_info *udh,
                                      uint32_t *udh_no_concat) {
  const uint8_t udhl = in.u8();
  if (udh == nullptr) {
    kest_log_error("%s udh_ptr null pointer, skip user data header parsing !!!\n", NAME);
  } else {
    *udh_no_concat = 1;
    walk_elements(in, udhl, {*udh, *udh_no_concat});
  }
  in.skip(udhl);
  return udhl;
}
