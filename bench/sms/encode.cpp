#include "kest/sms_encode.h"

#include "bench/inputs.h"
#include "bench/job.h"

namespace {

using work = std::function<void()>;

constexpr const char *NUMBER = "+4915112345678";

work submit(const std::string &text) {
  return [text] {
    uint8_t pdu[KEST_SMS_SUBMIT_PDU_SIZE];
    kest_sms_encode_gw_submit_pdu(NUMBER, text.c_str(), 0, 0, pdu, sizeof pdu);
  };
}

// segments returns the segments of a text, as a host cuts it.
std::vector<std::string> segments(const char *text) {
  std::vector<std::string> out;
  uint16_t length = 0;
  for (; *text != '\0'; text += length) {
    kest_sms_get_long_message_segment(text, 0, &length);
    out.emplace_back(text, length);
  }
  return out;
}

work segment_and_encode(const std::string &text) {
  return [text] {
    const std::vector<std::string> cut = segments(text.c_str());
    for (size_t i = 0; i < cut.size(); ++i) {
      uint8_t pdu[KEST_SMS_SUBMIT_PDU_SIZE];
      kest_sms_encode_long_gw_submit_pdu(NUMBER, cut[i].c_str(), 0, 0,
                                         static_cast<int32_t>(cut.size()),
                                         static_cast<int32_t>(i + 1), pdu, sizeof pdu);
    }
  };
}

work is_long(const std::string &text) {
  return [text] {
    kest_sms_is_long_message(text.c_str(), 0);
  };
}

std::string russian_characters(size_t count) {
  std::string text = repeated("Съешьжеещёэтихмягкихфранцузскихбулок", 2 * count);
  return text;
}

} // namespace

void measure_sms_encode(measured &out) {
  out.jobs.push_back({"encode SUBMIT, 160 septets", submit(repeated(ENGLISH, 160))});
  out.jobs.push_back({"encode SUBMIT, 70 UCS-2 characters", submit(russian_characters(70))});
  out.jobs.push_back({"encode DELIVER, 160 septets", [text = repeated(ENGLISH, 160)] {
                        uint8_t pdu[KEST_SMS_DELIVER_PDU_SIZE];
                        kest_sms_encode_gw_deliver_pdu(
                            NUMBER, text.c_str(), "2026/11/23,06:06:39+04", 0, 0, pdu, sizeof pdu);
                      }});
  out.jobs.push_back({"does a text of 1,000 characters fit", is_long(repeated(ENGLISH, 1000))});
  out.jobs.push_back(
      {"segment and encode 1,000 characters", segment_and_encode(repeated(ENGLISH, 1000))});
  out.curves.push_back({"encode SUBMIT, 7 bit", "characters", steps(160, 8), [](size_t size) {
                          return submit(repeated(ENGLISH, size));
                        }});
  out.curves.push_back(
      {"segment and encode, 7 bit", "characters", steps(2048, 128), [](size_t size) {
         return segment_and_encode(repeated(ENGLISH, size));
       }});
  out.curves.push_back({"segment and encode, mixed", "bytes", steps(2048, 128), [](size_t size) {
                          return segment_and_encode(mixed_text(size));
                        }});
  out.curves.push_back({"does a text fit", "bytes", steps(1024, 64), [](size_t size) {
                          return is_long(mixed_text(size));
                        }});
}
