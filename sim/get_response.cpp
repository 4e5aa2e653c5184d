// The answer to GET RESPONSE: fixed octets of 2G cards (ETSI TS 51.011, clause 9.2.1), the FCP
// template of 3G cards (ETSI TS 102 221, clause 11.1.1.3).
#include "kest/sim.h"

#include <cstring>

#include "sim/access.h"

namespace {

constexpr uint8_t FCP_TEMPLATE = 0x62;
constexpr uint16_t MF_ID = 0x3F00;

bool has_records(const kest_sim_file_info &info) {
  return info.file_type == KEST_SIM_FILE_CYCLIC || info.file_type == KEST_SIM_FILE_LINEAR_FIXED;
}

// set_2g_structure returns false for the structure of no EF.
bool set_2g_structure(uint8_t structure, kest_sim_file_info &info) {
  switch (structure) {
  case 0:
    info.file_type = KEST_SIM_FILE_TRANSPARENT;
    return true;
  case 1:
    info.file_type = KEST_SIM_FILE_LINEAR_FIXED;
    return true;
  case 3:
    info.file_type = KEST_SIM_FILE_CYCLIC;
    return true;
  default:
    return false;
  }
}

// quotient divides bit by bit: not every ARM has an instruction for it, and a call is larger.
uint16_t quotient(unsigned dividend, unsigned divisor) {
  unsigned result = 0;
  for (unsigned bit = 1U << 15; bit != 0; bit >>= 1) {
    if (dividend >= divisor * bit) {
      dividend -= divisor * bit;
      result |= bit;
    }
  }
  return static_cast<uint16_t>(result);
}

// read_2g_ef reads the answer for an EF after its file type.
void read_2g_ef(octet_reader &in, kest_sim_file_info &info) {
  in.skip(1);
  const uint8_t read_update = in.u8();
  const uint8_t increase = in.u8();
  const uint8_t activate_deactivate = in.u8(); // 2G: rehabilitate, invalidate
  in.skip(2);
  if (!set_2g_structure(in.u8(), info)) {
    return;
  }
  if (has_records(info)) {
    info.record_length = in.u8();
    if (info.record_length != 0) {
      info.record_count = quotient(info.file_size, info.record_length);
    }
  }
  kest_sim_decode_access_nibble(read_update >> 4, info.read);
  kest_sim_decode_access_nibble(read_update & 0xF, info.update);
  kest_sim_decode_access_nibble(increase >> 4, info.increase);
  kest_sim_decode_access_nibble(activate_deactivate >> 4, info.activate);
  kest_sim_decode_access_nibble(activate_deactivate & 0xF, info.deactivate);
}

bool read_2g(octet_reader in, kest_sim_file_info &info) {
  in.skip(2);
  info.file_size = in.u16();
  info.file_id = in.u16();
  switch (in.u8()) {
  case 1:
    info.file_type = KEST_SIM_FILE_MF;
    break;
  case 2:
    info.file_type = KEST_SIM_FILE_DF;
    break;
  case 4:
    read_2g_ef(in, info);
    break;
  default:
    break;
  }
  return !in.overrun;
}

// Objects of the template, in its order.
constexpr uint8_t FILE_DESCRIPTOR = 0x82;
constexpr uint8_t FILE_ID = 0x83;
constexpr uint8_t PROPRIETARY_INFORMATION = 0xA5;
constexpr uint8_t SECURITY_REFERENCED = 0x8B;
constexpr uint8_t SECURITY_COMPACT = 0x8C;
constexpr uint8_t SECURITY_EXPANDED = 0xAB;
constexpr uint8_t FILE_SIZE = 0x80;

struct data_object {
  uint8_t tag = 0;
  uint8_t length = 0;
  size_t value = 0; // position
};

// take_object returns the next object, or one with the tag 0 after the last.
data_object take_object(octet_reader &in) {
  if (in.left() == 0) {
    return {};
  }
  const uint8_t tag = in.u8();
  const uint8_t length = in.u8();
  const size_t value = in.pos;
  in.skip(length);
  return {tag, length, value};
}

// value_of is not bounded by the object's length: later reads may go past the object's end, up to
// the end of the answer.
octet_reader value_of(const data_object &object, const octet_reader &in) {
  return {in.octets, object.value};
}

// A file descriptor octet (clause 11.1.1.4.3).
void set_3g_type(uint8_t descriptor, kest_sim_file_info &info) {
  constexpr unsigned RESERVED = 0x80;
  constexpr unsigned STRUCTURE = 0x07;
  constexpr unsigned FOLDER = 0x38;
  if ((descriptor & RESERVED) != 0) {
    return;
  }
  switch (descriptor & STRUCTURE) {
  case 1:
    info.file_type = KEST_SIM_FILE_TRANSPARENT;
    break;
  case 2:
    info.file_type = KEST_SIM_FILE_LINEAR_FIXED;
    break;
  case 6:
    info.file_type = KEST_SIM_FILE_CYCLIC;
    break;
  default:
    break;
  }
  if ((descriptor & FOLDER) == FOLDER) {
    info.file_type = KEST_SIM_FILE_DF;
  }
}

void read_descriptor(octet_reader &in, kest_sim_file_info &info) {
  constexpr uint8_t LENGTH_WITH_RECORDS = 5;
  const data_object object = take_object(in);
  octet_reader value = value_of(object, in);
  set_3g_type(value.u8(), info);
  if (object.length == LENGTH_WITH_RECORDS && has_records(info)) {
    value.skip(1);
    info.record_length = value.u16();
    info.record_count = value.u8();
  }
  in.overrun |= value.overrun;
}

// read_identifier refuses an answer that ends before the identifier.
void read_identifier(octet_reader &in, kest_sim_file_info &info) {
  in.overrun |= in.left() == 0;
  const data_object object = take_object(in);
  if (object.tag != FILE_ID) {
    return;
  }
  octet_reader value = value_of(object, in);
  info.file_id = value.u16();
  if (info.file_id == MF_ID && info.file_type == KEST_SIM_FILE_DF) {
    info.file_type = KEST_SIM_FILE_MF;
  }
  in.overrun |= value.overrun;
}

void read_security(octet_reader &in, kest_sim_file_info &info) {
  constexpr uint8_t REFERENCE_SIZE = 3; // file identifier and record number
  const data_object object = take_object(in);
  if (object.length == 0 || in.overrun) {
    return;
  }
  octet_reader value{in.octets.subspan(object.value, object.length)}; // whole: nothing overran
  if (object.tag == SECURITY_COMPACT) {
    kest_sim_decode_compact_attributes(value, info);
  } else if (object.tag == SECURITY_EXPANDED) {
    kest_decode_exp_sec_attr(value.octets.data(), object.length, &info);
  } else if (object.tag == SECURITY_REFERENCED && object.length >= REFERENCE_SIZE) {
    info.ref_file_id = value.u16();
    info.ref_record = value.octets.back();
  }
}

// read_3g reads a template with a length of one octet, or of two.
bool read_3g(octet_reader in, kest_sim_file_info &info) {
  in.skip(2);
  if (in.next() != FILE_DESCRIPTOR) {
    in.skip(1);
    if (in.next() != FILE_DESCRIPTOR) {
      return false;
    }
  }
  read_descriptor(in, info);
  read_identifier(in, info);
  if (in.next() == PROPRIETARY_INFORMATION) {
    take_object(in);
  }
  take_object(in); // life cycle status. NOTE: or what an ADF has in its place, its name
  read_security(in, info);
  if (in.next() == FILE_SIZE) {
    in.skip(2);
    info.file_size = in.u16();
  }
  return !in.overrun;
}

} // namespace

int32_t kest_decode_sim_get_response_data(const uint8_t *data, uint16_t length,
                                          kest_sim_file_info *info) {
  if (data == nullptr || length == 0 || info == nullptr) {
    return 0;
  }
  kest_sim_file_info before;
  memcpy(&before, info, sizeof before); // with the padding
  const octet_reader answer{{data, length}};
  if (!(data[0] == FCP_TEMPLATE ? read_3g(answer, *info) : read_2g(answer, *info))) {
    memcpy(info, &before, sizeof before); // a refused answer changes nothing
    return 0;
  }
  return 1;
}
