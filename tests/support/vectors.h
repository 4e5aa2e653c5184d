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

// The records of the library as JSON objects, a rule as its method and mask.
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(kest_sms_udh_info, iei, reference, total, sequence, dest_port,
                                   orig_port)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(kest_sms_cb_info, format, message_identifier, serial_number,
                                   geographical_scope, message_code, update_number,
                                   umts_message_type, alphabet, language, language_chars,
                                   total_pages, page_number, warning_type, emergency_user_alert,
                                   popup, timestamp, cmas_class, cmas_severity, cmas_urgency,
                                   cmas_certainty)

inline void to_json(json &out, const kest_sim_access_condition &rule) {
  out = {rule.method, rule.mask};
}

inline void from_json(const json &in, kest_sim_access_condition &rule) {
  rule = {in[0], in[1]};
}

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(kest_sim_file_info, file_size, file_id, file_type, record_length,
                                   record_count, read, update, increase, deactivate, activate,
                                   ref_file_id, ref_record)

// changed returns a record with the fields that a row names in `name`.
inline json changed(json record, const json &row, const char *name) {
  record.update(row.value(name, json::object()));
  return record;
}
