// tests/support/vectors.h: tables of inputs and what they must give. A test reads its rows from the
// JSON file beside it. Octet strings in them are hexadecimal, with blanks as one likes; "00*140"
// stands for an octet 140 times.
#pragma once
#include <fstream>
#include <string>

#include <nlohmann/json.hpp>

#include "kest/sim.h"
#include "kest/types.h"
#include "tests/support/octets.h"

using nlohmann::json;

// vectors returns the rows of a table, by the test's path without "_test".
inline json vectors(const std::string &test) {
  std::ifstream file(KEST_TESTS "/" + test + "_test.json");
  return json::parse(file);
}

inline std::string hex_value(const json &row, const char *name) {
  return compact(row[name].get<std::string>());
}

inline std::vector<uint8_t> octets_value(const json &row, const char *name) {
  return octets(row[name].get<std::string>());
}

inline json to_json(const kest_sms_udh_info &udh) {
  return {{"iei", udh.iei},           {"reference", udh.reference}, {"total", udh.total},
          {"sequence", udh.sequence}, {"dest_port", udh.dest_port}, {"orig_port", udh.orig_port}};
}

inline json to_json(const kest_sim_access_condition &rule) {
  return {rule.method, rule.mask};
}

inline json to_json(const kest_sim_file_info &i) {
  return {{"file_size", i.file_size},
          {"file_id", i.file_id},
          {"file_type", i.file_type},
          {"record_length", i.record_length},
          {"record_count", i.record_count},
          {"read", to_json(i.read)},
          {"update", to_json(i.update)},
          {"increase", to_json(i.increase)},
          {"deactivate", to_json(i.deactivate)},
          {"activate", to_json(i.activate)},
          {"ref_file_id", i.ref_file_id},
          {"ref_record", i.ref_record}};
}

// expected_udh returns what a header record must hold: the row's "udh", and for the rest what it
// held before.
inline json expected_udh(const json &row, const kest_sms_udh_info &before) {
  json udh = to_json(before);
  udh.update(row.value("udh", json::object()));
  return udh;
}
