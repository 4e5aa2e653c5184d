#include "kest/sms_cdma.h"

#include "log/debug_log.h"
#include "octets/writer.h"
#include "sms/cdma/address.h"
#include "sms/cdma/bearer_data.h"
#include "sms/encode/user_data.h"

namespace {

constexpr const char *NAME = "kest_sms_encode_cdma_submit_pdu";

constexpr uint8_t SMS_POINT_TO_POINT = 0x00; // message type (C.S0015, table 3.4-1)

// Parameters (C.S0015, table 3.4.3-1).
constexpr uint8_t TELESERVICE_IDENTIFIER = 0x00;
constexpr uint8_t DESTINATION_ADDRESS = 0x04;
constexpr uint8_t BEARER_REPLY_OPTION = 0x06;
constexpr uint8_t BEARER_DATA = 0x08;

constexpr uint16_t TELESERVICE_CMT_95 = 0x1002; // 4098 (3GPP2 C.R1001)

constexpr size_t FIXED_OCTETS = 12; // the parameters' heads, and those that never vary
static_assert(FIXED_OCTETS + CDMA_ADDRESS_SIZE + CDMA_BEARER_DATA_SIZE ==
              KEST_SMS_CDMA_SUBMIT_PDU_SIZE);

void put_teleservice(octet_writer &out) {
  out.u8(TELESERVICE_IDENTIFIER);
  out.u8(2);
  out.u16(TELESERVICE_CMT_95);
}

void put_bearer_reply_option(octet_writer &out) {
  out.u8(BEARER_REPLY_OPTION);
  out.u8(1);
  out.u8(0); // REPLY_SEQ, six bits, and two reserved ones
}

// The value of a parameter is written in place after its length octet.

[[nodiscard]] bool put_address(octet_writer &out, const char *number) {
  uint8_t *const length = out.data + out.pos;
  const uint32_t written = kest_sms_encode_cdma_address(number, length + 1, length);
  if (written == 0) {
    kest_log_error("%s encode cdma address fail !!!\n", NAME);
    return false;
  }
  out.space(1 + written);
  return true;
}

[[nodiscard]] bool put_bearer_data(octet_writer &out, const message_text &text,
                                   uint32_t status_report) {
  uint8_t *const length = out.data + out.pos;
  const uint32_t written =
      kest_sms_encode_cdma_bearer_data(text, status_report, length + 1, length);
  if (written == 0) {
    kest_log_error("%s encode cdma bearer data fail !!!\n", NAME);
    return false;
  }
  out.space(1 + written);
  return true;
}

} // namespace

uint32_t kest_sms_encode_cdma_submit_pdu(const char *number, const char *text,
                                         uint32_t status_report, uint32_t is_hex, uint8_t *pdu) {
  if (number == nullptr || text == nullptr || pdu == nullptr) {
    kest_log_error("%s NULL pointer check fail !!!\n", NAME);
    return 0;
  }
  message_text taken;
  kest_sms_take_text(NAME, text, is_hex != 0, taken);
  octet_writer out{pdu, KEST_SMS_CDMA_SUBMIT_PDU_SIZE};
  out.u8(SMS_POINT_TO_POINT);
  put_teleservice(out);
  out.u8(DESTINATION_ADDRESS);
  if (!put_address(out, number)) {
    return 0;
  }
  put_bearer_reply_option(out);
  out.u8(BEARER_DATA);
  if (!put_bearer_data(out, taken, status_report)) {
    return 0;
  }
  return static_cast<uint32_t>(out.pos);
}
