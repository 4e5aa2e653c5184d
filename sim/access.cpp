#include "sim/access.h"

#include <iterator>

namespace {

constexpr kest_sim_access_condition ALWAYS = {KEST_SIM_ACCESS_ALWAYS, 0};
constexpr kest_sim_access_condition NEVER = {KEST_SIM_ACCESS_NEVER, 0};

// The bit of an access mode octet that selects a rule, in the order of the compact conditions from
// the last one on.
struct mode_bit {
  uint8_t bit;
  kest_sim_access_condition kest_sim_file_info::*rule;
};

constexpr mode_bit MODE_BITS[] = {{0x01, &kest_sim_file_info::read},
                                  {0x02, &kest_sim_file_info::update},
                                  {0x08, &kest_sim_file_info::deactivate},
                                  {0x10, &kest_sim_file_info::activate}};
constexpr uint8_t INSTRUCTION_INCREASE = 0x32; // what a command header may name in place of a mode

// Key references (ETSI TS 102 221, clause 9.5.1).
struct key_row {
  uint8_t first, last;
  uint16_t key;
};

constexpr key_row KEY_ROWS[] = {
    {0x01, 0x08, KEST_SIM_KEY_PIN},           {0x81, 0x88, KEST_SIM_KEY_PIN2},
    {0x11, 0x11, KEST_SIM_KEY_UNIVERSAL_PIN}, {0x0A, 0x0A, KEST_SIM_KEY_ADM1},
    {0x0B, 0x0B, KEST_SIM_KEY_ADM1 << 1},     {0x0C, 0x0C, KEST_SIM_KEY_ADM1 << 2},
    {0x0D, 0x0D, KEST_SIM_KEY_ADM1 << 3},     {0x0E, 0x0E, KEST_SIM_KEY_ADM1 << 4},
    {0x8A, 0x8A, KEST_SIM_KEY_ADM1 << 5},     {0x8B, 0x8B, KEST_SIM_KEY_ADM1 << 6},
    {0x8C, 0x8C, KEST_SIM_KEY_ADM1 << 7},     {0x8D, 0x8D, KEST_SIM_KEY_ADM1 << 8},
    {0x8E, 0x8E, KEST_SIM_KEY_ADM10},
};

// key_of returns 0 if the reference names no key.
uint16_t key_of(uint8_t reference) {
  for (const key_row &row : KEY_ROWS) {
    if (reference >= row.first && reference <= row.last) {
      return row.key;
    }
  }
  return 0;
}

// Data objects of the expanded format (ISO/IEC 7816-4).
constexpr uint8_t ACCESS_MODE = 0x80;
constexpr uint8_t COMMAND_HEADER = 0x84;
constexpr uint8_t OR_TEMPLATE = 0xA0;
constexpr uint8_t AND_TEMPLATE = 0xAF;
constexpr uint8_t CONDITION_ALWAYS = 0x90;
constexpr uint8_t CONDITION_NEVER = 0x97;
constexpr uint8_t CONTROL_REFERENCE_TEMPLATE = 0xA4;
constexpr uint8_t KEY_REFERENCE = 0x83;

// How several keys combine, and the octets of conditions: 0 without a template, and then at most
// one key.
struct condition_template {
  kest_sim_access_method method = KEST_SIM_ACCESS_NEVER;
  size_t length = 0;
};

condition_template open_template(octet_reader &in) {
  const uint8_t tag = in.next();
  if (tag != OR_TEMPLATE && tag != AND_TEMPLATE) {
    return {};
  }
  in.u8();
  return {tag == OR_TEMPLATE ? KEST_SIM_ACCESS_OR : KEST_SIM_ACCESS_AND, in.u8()};
}

// A rule under construction.
struct open_rule {
  kest_sim_access_condition condition = NEVER;
  unsigned keys = 0; // key references so far, known or not
};

// add_key combines the key of `reference` with the keys before it. An unknown reference removes all
// of them.
void add_key(uint8_t reference, const condition_template &outer, open_rule &rule) {
  kest_sim_access_condition &condition = rule.condition;
  if (rule.keys > 0) {
    condition.method = outer.method;
  }
  const uint16_t key = key_of(reference);
  if (key != 0) {
    condition.mask |= key;
  } else {
    condition = NEVER;
  }
  ++rule.keys;
}

// read_key reads the key reference at the start of a control reference template, if there is one.
// NOTE: both length octets are ignored, so for a template too short to hold a key, the key is read
// from the octets after it.
void read_key(octet_reader &in, const condition_template &outer, open_rule &rule) {
  if (in.next() == KEY_REFERENCE) {
    octet_reader content = in;
    content.skip(2);
    add_key(content.u8(), outer, rule);
    in.overrun = content.overrun;
  }
}

// read_condition reads one object and returns its length octet. NOTE: only the value of a control
// reference template is skipped. That of another object is read as the next object.
size_t read_condition(octet_reader &in, const condition_template &outer, open_rule &rule) {
  const uint8_t tag = in.u8();
  const size_t length = in.u8();
  if (tag == CONTROL_REFERENCE_TEMPLATE) {
    read_key(in, outer, rule);
    in.skip(length);
  } else if (tag == CONDITION_ALWAYS && length == 0) {
    rule.condition.method = KEST_SIM_ACCESS_ALWAYS;
  } else if (tag == CONDITION_NEVER && length == 0) {
    rule.condition.method = KEST_SIM_ACCESS_NEVER;
  }
  return length;
}

// read_rule reads the conditions after an access mode: a template of them, or one. NOTE: each
// object counts one octet more than it has, so the last objects of a long template are not read.
// While the count does not exceed the template's length, another object is read, even after its
// end.
kest_sim_access_condition read_rule(octet_reader &in) {
  const condition_template outer = open_template(in);
  open_rule rule;
  size_t consumed = 0;
  do {
    consumed += read_condition(in, outer, rule) + 3;
  } while (consumed <= outer.length);
  if (rule.keys == 1 && rule.condition.mask != 0) {
    rule.condition.method = KEST_SIM_ACCESS_SINGLE;
  }
  return rule.condition;
}

void store_rule(uint8_t mode, const kest_sim_access_condition &rule, kest_sim_file_info &info) {
  if ((mode & INSTRUCTION_INCREASE) == INSTRUCTION_INCREASE) {
    info.increase = rule;
    return;
  }
  for (const mode_bit &row : MODE_BITS) {
    if ((mode & row.bit) != 0) {
      info.*row.rule = rule;
    }
  }
}

void forbid_all(kest_sim_file_info &info) {
  info.read = NEVER;
  info.update = NEVER;
  info.increase = NEVER;
  info.deactivate = NEVER;
  info.activate = NEVER;
}

} // namespace

void kest_sim_decode_access_nibble(uint8_t nibble, kest_sim_access_condition &rule) {
  constexpr uint8_t CHV1 = 1;
  constexpr uint8_t CHV2 = 2;
  constexpr uint8_t ADM_FIRST = 4;
  constexpr uint8_t ADM_LAST = 14;
  rule = NEVER;
  if (nibble == 0) {
    rule = ALWAYS;
  } else if (nibble == CHV1 || nibble == CHV2) {
    rule = {KEST_SIM_ACCESS_SINGLE, nibble == CHV1 ? KEST_SIM_KEY_PIN : KEST_SIM_KEY_PIN2};
  } else if (nibble >= ADM_FIRST && nibble <= ADM_LAST) {
    rule = {KEST_SIM_ACCESS_SINGLE, uint64_t{1} << nibble};
  }
}

void kest_sim_decode_compact_rule(uint8_t condition, kest_sim_access_condition &rule) {
  switch (condition) {
  case 0x00:
    rule = ALWAYS;
    break;
  case 0x10:
    rule = {KEST_SIM_ACCESS_OR, rule.mask | KEST_SIM_KEY_PIN};
    break;
  case 0x90:
    rule = {KEST_SIM_ACCESS_OR, rule.mask | KEST_SIM_KEY_ADM1};
    break;
  case 0xFF:
    rule = NEVER;
    break;
  default:
    break;
  }
}

void kest_sim_decode_compact_attributes(octet_reader in, kest_sim_file_info &info) {
  const uint8_t mode = in.u8();
  const std::span<const uint8_t> conditions = in.take(in.left());
  forbid_all(info);
  // The last condition is that of the lowest bit. NOTE: the others keep their places whether the
  // bits below them are set or not.
  for (size_t i = 0; i < std::size(MODE_BITS) && i < conditions.size(); ++i) {
    if ((mode & MODE_BITS[i].bit) != 0) {
      kest_sim_decode_compact_rule(conditions[conditions.size() - 1 - i], info.*MODE_BITS[i].rule);
    }
  }
}

void kest_decode_exp_sec_attr(const uint8_t *data, uint16_t length, kest_sim_file_info *info) {
  forbid_all(*info);
  octet_reader in{{data, length}};
  while (in.left() > 0) {
    const uint8_t tag = in.u8();
    if (tag == 0x00 || tag == 0xFF) {
      return;
    }
    if (tag != ACCESS_MODE && tag != COMMAND_HEADER) {
      continue;
    }
    in.u8(); // length, taken to be 1
    const uint8_t mode = in.u8();
    const kest_sim_access_condition rule = read_rule(in);
    if (in.overrun) {
      return;
    }
    store_rule(mode, rule, *info);
  }
}
