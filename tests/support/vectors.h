// tests/support/vectors.h: tables of inputs and what they must give. A test reads its rows from the
// JSON file beside it. Octet strings in them are hexadecimal, with blanks as one likes; "00*140"
// stands for an octet 140 times.
#pragma once
#include <fstream>
#include <string>

#include <nlohmann/json.hpp>

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
