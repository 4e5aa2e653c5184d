#include "tools/names.h"

#include <iterator>

#include "kest/kest.h"

namespace {

// name_at returns the name of `value`, or `other` after the end of the table.
template <size_t size>
const char *name_at(const char *const (&names)[size], unsigned value, const char *other) {
  return value < size ? names[value] : other;
}

constexpr const char *COMPLETED[] = {"received by the recipient",
                                     "forwarded, delivery not confirmed",
                                     "replaced by the service centre"};
constexpr const char *TEMPORARY[] = {"congestion",
                                     "recipient busy",
                                     "no response from the recipient",
                                     "service rejected",
                                     "quality of service not available",
                                     "error in the recipient's equipment"};
constexpr const char *PERMANENT[] = {"remote procedure error",
                                     "incompatible destination",
                                     "connection rejected by the recipient",
                                     "not obtainable",
                                     "quality of service not available",
                                     "no interworking available",
                                     "validity period expired",
                                     "deleted by its sender",
                                     "deleted by the service centre",
                                     "message does not exist"};

} // namespace

std::string status_name(unsigned status) {
  constexpr const char *RESERVED = "reserved";
  if (status >= 0x80) {
    return RESERVED;
  }
  const unsigned reason = status & 0x1F;
  if (reason >= 0x10) {
    return "specific to the service centre";
  }
  switch (status >> 5) {
  case 0:
    return name_at(COMPLETED, reason, RESERVED);
  case 2:
    return name_at(PERMANENT, reason, RESERVED);
  default:
    return name_at(TEMPORARY, reason, RESERVED);
  }
}

const char *status_group(unsigned status) {
  constexpr const char *GROUPS[] = {"completed", "temporary error, still trying", "permanent error",
                                    "temporary error, given up"};
  return name_at(GROUPS, status >> 5, "reserved");
}

std::string language_name(unsigned octet) {
  constexpr const char *FIRST[] = {"German",    "English", "Italian", "French",     "Spanish",
                                   "Dutch",     "Swedish", "Danish",  "Portuguese", "Finnish",
                                   "Norwegian", "Greek",   "Turkish", "Hungarian",  "Polish"};
  constexpr const char *SECOND[] = {"Czech", "Hebrew", "Arabic", "Russian", "Icelandic"};
  constexpr const char *RESERVED = "reserved";
  return octet < 0x20 ? name_at(FIRST, octet, RESERVED) : name_at(SECOND, octet - 0x20, RESERVED);
}

const char *scope_name(unsigned geographical_scope) {
  constexpr const char *SCOPES[] = {"cell, shown at once", "network", "location area", "cell"};
  return SCOPES[geographical_scope & 3];
}

const char *etws_name(unsigned warning_type) {
  constexpr const char *TYPES[] = {"earthquake", "tsunami", "earthquake and tsunami", "test",
                                   "other"};
  return name_at(TYPES, warning_type, "reserved");
}

const char *cmas_name(int message_class) {
  constexpr const char *CLASSES[] = {
      "presidential level",    "extreme",  "severe",          "child abduction emergency",
      "required monthly test", "exercise", "operator defined"};
  return name_at(CLASSES, static_cast<unsigned>(message_class), "not classified");
}

const char *file_type_name(uint32_t file_type) {
  constexpr const char *TYPES[] = {"transparent EF", "cyclic EF", "linear fixed EF", "DF", "MF"};
  return name_at(TYPES, file_type, "unknown");
}

const char *method_name(uint32_t method) {
  constexpr const char *METHODS[] = {"always", "never", "all of", "any of", "key"};
  return name_at(METHODS, method, "unknown");
}

std::vector<std::string> key_names(uint64_t mask) {
  constexpr unsigned FIRST_ADM = 4; // bit
  std::vector<std::string> names;
  for (unsigned bit = 0; bit < 64; ++bit) {
    if ((mask >> bit & 1) != 0) {
      constexpr const char *PINS[] = {"PIN", "PIN2", "universal PIN", "key 4"};
      names.push_back(bit < FIRST_ADM ? PINS[bit] : "ADM" + std::to_string(bit - FIRST_ADM + 1));
    }
  }
  return names;
}
