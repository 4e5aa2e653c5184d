// tests/support/vectors.h: tables of inputs and what they must give. A test reads its rows from the
// JSON file beside it. Octet strings in them are hexadecimal, with blanks as one likes; "00*140"
// stands for an octet 140 times.
#pragma once
#include <string>

#include <nlohmann/json.hpp>

#include "tests/support/octets.h"

using nlohmann::json;
extern template class nlohmann::basic_json<>; // compiled once, in vectors.cpp

// vectors returns the rows of a table, by the test's path without "_test".
json vectors(const std::string &test);

inline std::string hex_value(const json &row, const char *name) {
  return compact(row[name].get<std::string>());
}

inline std::vector<uint8_t> octets_value(const json &row, const char *name) {
  return octets(row[name].get<std::string>());
}

// changed returns a record with the fields that a row names in `name`.
inline json changed(json record, const json &row, const char *name) {
  record.update(row.value(name, json::object()));
  return record;
}
