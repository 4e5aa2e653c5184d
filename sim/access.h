// sim/access.h: the access rules of a file, in the three encodings of SIM cards. What is not
// understood is KEST_SIM_ACCESS_NEVER without a key, or leaves a rule as it was.
#pragma once
#include <cstdint>

#include "kest/sim.h"
#include "octets/reader.h"

// kest_sim_decode_access_nibble sets `rule` to an access condition of 2G cards (ETSI TS 51.011,
// clause 9.3).
void kest_sim_decode_access_nibble(uint8_t nibble, kest_sim_access_condition &rule);

// kest_sim_decode_compact_rule applies a security condition octet (ISO/IEC 7816-4) to `rule`. It
// adds a key to those of `rule`, and ignores an unknown octet.
void kest_sim_decode_compact_rule(uint8_t condition, kest_sim_access_condition &rule);

// kest_sim_decode_compact_attributes replaces the five rules of `info` by those of a compact
// security attribute: an access mode octet and its conditions.
void kest_sim_decode_compact_attributes(octet_reader in, kest_sim_file_info &info);
