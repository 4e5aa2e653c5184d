// The answer to GET RESPONSE: fixed octets of 2G cards (ETSI TS 51.011, clause 9.2.1), the FCP
// template of 3G cards (ETSI TS 102 221, clause 11.1.1.3).
#include "kest/sim.h"

#include <cstring>

#include "sim/access.h"
#include "sim/answer_reader.h"

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

// read_2g_ef reads the answer for an EF from behind its file type on.
void read_2g_ef(answer_reader &in, kest_sim_file_info &info) {
  skip_octets(in, 1);
  const uint8_t read_update = take_octet(in);
  const uint8_t increase = take_octet(in);
  const uint8_t activate_deactivate = take_octet(in); // 2G: rehabilitate, invalidate
  skip_octets(in, 2);
  if (!set_2g_structure(take_octet(in), info)) {
    return;
  }
  if (has_records(info)) {
    info.record_length = take_octet(in);
    if (info.record_length != 0) {
      info.record_count = info.file_size / info.record_length;
    }
  }
  kest_sim_decode_access_nibble(read_update >> 4, info.read);
  kest_sim_decode_access_nibble(read_update & 0xF, info.update);
  kest_sim_decode_access_nibble(increase >> 4, info.increase);
  kest_sim_decode_access_nibble(activate_deactivate >> 4, info.activate);
  kest_sim_decode_access_nibble(activate_deactivate & 0xF, info.deactivate);
}

bool read_2g(answer_reader in, kest_sim_file_info &info) {
  skip_octets(in, 2);
  info.file_size = take_number(in);
  info.file_id = take_number(in);
  switch (take_octet(in)) {
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
  return !in.cut_off;
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

// take_object steps over the next object. Behind the last one it gives none, with the tag 0.
data_object take_object(answer_reader &in) {
  if (octets_left(in) == 0) {
    return {};
  }
  const uint8_t tag = take_octet(in);
  const uint8_t length = take_octet(in);
  const size_t value = in.pos;
  skip_octets(in, length);
  return {tag, length, value};
}

// value_of is not bounded by the object's length: what a step wants is read where it stands.
answer_reader value_of(const data_object &object, const answer_reader &in) {
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

void read_descriptor(answer_reader &in, kest_sim_file_info &info) {
  constexpr uint8_t LENGTH_WITH_RECORDS = 5;
  const data_object object = take_object(in);
  answer_reader value = value_of(object, in);
  set_3g_type(take_octet(value), info);
  if (object.length == LENGTH_WITH_RECORDS && has_records(info)) {
    skip_octets(value, 1);
    info.record_length = take_number(value);
    info.record_count = take_octet(value);
  }
  in.cut_off |= value.cut_off;
}

// read_identifier takes an answer that ends ahead of the identifier for one that is cut off.
void read_identifier(answer_reader &in, kest_sim_file_info &info) {
  in.cut_off |= octets_left(in) == 0;
  const data_object object = take_object(in);
  if (object.tag != FILE_ID) {
    return;
  }
  answer_reader value = value_of(object, in);
  info.file_id = take_number(value);
  if (info.file_id == MF_ID && info.file_type == KEST_SIM_FILE_DF) {
    info.file_type = KEST_SIM_FILE_MF;
  }
  in.cut_off |= value.cut_off;
}

void read_security(answer_reader &in, kest_sim_file_info &info) {
  constexpr uint8_t REFERENCE_SIZE = 3; // file identifier and record number
  const data_object object = take_object(in);
  if (object.length == 0 || in.cut_off) {
    return;
  }
  // The object is not cut off, so that all of its value is there.
  const std::span<const uint8_t> value = in.octets.subspan(object.value, object.length);
  if (object.tag == SECURITY_COMPACT) {
    kest_sim_decode_compact_attributes(value, info);
  } else if (object.tag == SECURITY_EXPANDED) {
    kest_decode_exp_sec_attr(value.data(), object.length, &info);
  } else if (object.tag == SECURITY_REFERENCED && object.length >= REFERENCE_SIZE) {
    info.ref_file_id = static_cast<uint16_t>(value[0] << 8 | value[1]);
    info.ref_record = value.back();
  }
}

// read_3g reads a template with a length of one octet, or of two.
bool read_3g(answer_reader in, kest_sim_file_info &info) {
  skip_octets(in, 2);
  if (next_octet(in) != FILE_DESCRIPTOR) {
    skip_octets(in, 1);
    if (next_octet(in) != FILE_DESCRIPTOR) {
      return false;
    }
  }
  read_descriptor(in, info);
  read_identifier(in, info);
  if (next_octet(in) == PROPRIETARY_INFORMATION) {
    take_object(in);
  }
  take_object(in); // life cycle status. NOTE: or what an ADF has in its place, its name
  read_security(in, info);
  if (next_octet(in) == FILE_SIZE) {
    skip_octets(in, 2);
    info.file_size = take_number(in);
  }
  return !in.cut_off;
}

} // namespace

int32_t kest_decode_sim_get_response_data(const uint8_t *data, uint16_t length,
                                          kest_sim_file_info *info) {
  if (data == nullptr || length == 0 || info == nullptr) {
    return 0;
  }
  kest_sim_file_info before;
  memcpy(&before, info, sizeof before); // what is between the fields as well
  const answer_reader answer = {{data, length}};
  if (!(data[0] == FCP_TEMPLATE ? read_3g(answer, *info) : read_2g(answer, *info))) {
    memcpy(info, &before, sizeof before); // a refused answer leaves no traces
    return 0;
  }
  return 1;
}
