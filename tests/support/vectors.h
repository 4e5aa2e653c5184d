// tests/support/vectors.h: tables of inputs and what they must give. A test reads its rows from the
// JSON file beside it. Octet strings in them are hexadecimal, with blanks as one likes; "00*140"
// stands for an octet 140 times.
#pragma once
#include <fstream>
#include <string>

#include <nlohmann/json.hpp>

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

// expected_udh returns what a header record must hold: the row's "udh", and for the rest what it
// held before.
inline json expected_udh(const json &row, const kest_sms_udh_info &before) {
  json udh = to_json(before);
  udh.update(row.value("udh", json::object()));
  return udh;
}
