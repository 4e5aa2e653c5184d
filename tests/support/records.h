// tests/support/records.h: the library's records as JSON objects, a rule as its method and mask.
#pragma once
#include "kest/sim.h"
#include "kest/types.h"
#include "tests/support/vectors.h"

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
