// tests/support/segments.h: a text cut into segments, and each of them encoded.
#pragma once
#include <algorithm>
#include <string>
#include <vector>

#include "kest/sms_encode.h"
#include "tests/support/octets.h"

constexpr const char *SEGMENT_TIME = "2026/11/22,21:30:05-14";

// segments_of walks a text. A walk that stands still or fails ends in a segment without a text.
inline std::vector<std::string> segments_of(const std::string &text, uint32_t is_hex) {
  std::vector<std::string> segments;
  for (size_t at = 0; at < text.size(); at += segments.back().size()) {
    const auto rest = exact_text(text.substr(at));
    uint16_t len = 0;
    const int32_t units = kest_sms_get_long_message_segment(rest.get(), is_hex, &len);
    segments.push_back(units <= 152 ? text.substr(at, len) : "");
    if (segments.back().empty() || len > text.size() - at) {
      segments.back().clear();
      return segments;
    }
  }
  return segments;
}

// segment_pdu encodes a segment into a block of the documented size; empty if it is refused.
inline std::vector<uint8_t> segment_pdu(bool submit, const char *number, const std::string &part,
                                        uint32_t is_hex, int32_t total, int32_t sequence) {
  const auto text = exact_text(part);
  std::vector<uint8_t> pdu(submit ? 158 : 163);
  const int32_t size =
      submit ? kest_sms_encode_long_gw_submit_pdu(number, text.get(), 1, is_hex, total, sequence,
                                                  pdu.data(), 158)
             : kest_sms_encode_long_gw_deliver_pdu(number, text.get(), SEGMENT_TIME, 1, is_hex,
                                                   total, sequence, pdu.data(), 163);
  pdu.resize(std::min(static_cast<size_t>(size), pdu.size() + 1)); // more than that: too much
  return pdu;
}
