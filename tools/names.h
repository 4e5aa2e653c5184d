// tools/names.h: what the numbers of the standards mean.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

// TP-ST of a status report (3GPP TS 23.040, clause 9.2.3.15): what happened to the message, and
// which group of outcomes that belongs to.
std::string status_name(unsigned status);
const char *status_group(unsigned status);

// A language of the data coding schemes of cell broadcast (3GPP TS 23.038, clause 5).
std::string language_name(unsigned octet);

// Cell broadcast (3GPP TS 23.041, clauses 9.4.1.2.1, 9.3.24 and 9.4.1.2.2): where a message is
// valid, an ETWS warning type, and the classification of a CMAS message, of which -1 is unknown.
const char *scope_name(unsigned geographical_scope);
const char *etws_name(unsigned warning_type);
const char *cmas_name(int message_class);

// The structure of a SIM file; how the keys of an access rule combine; the keys of its mask.
const char *file_type_name(uint32_t file_type);
const char *method_name(uint32_t method);
std::vector<std::string> key_names(uint64_t mask);
