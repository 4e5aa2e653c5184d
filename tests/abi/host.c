#include <kest/kest.h>
#include <stdio.h>

uint32_t log_level = 0;             /* bits of what the library logs */
char LOG_FILE[] = "kest.log";       /* where to; "" for nowhere */
uint32_t LOG_FILE_MAX_SIZE = 65536; /* octets; then it becomes kest.log.1 */
char LOG_FILE_COMPRESSED[] = "";

int main(void) {
  uint8_t pdu[KEST_SMS_SUBMIT_PDU_SIZE];
  uint32_t size = kest_sms_encode_gw_submit_pdu("+4917", "hello", 0, 0, pdu, sizeof pdu);
  char line[2 + 2 * sizeof pdu + 1] = "00"; /* no service centre: the modem has its own */
  kest_binary_to_hexstring_uppercase(pdu, (uint16_t)size, line + 2, sizeof line - 2);
  printf("AT+CMGS=%u\n%s\n", (unsigned)size, line);

  char number[KEST_SMS_ADDRESS_TEXT_SIZE] = "", hex[KEST_SMS_USERDATA_TEXT_SIZE], text[256];
  kest_sms_udh_info udh = {0};
  uint32_t decoded = kest_sms_decode_gw_submit_pdu(line, NULL, number, hex, &udh);
  kest_hexstring_to_binary(decoded == 1 ? hex : "", (uint8_t *)text, sizeof text);
  printf("%s: %s\n", number, text);
  return decoded == 1 ? 0 : 1;
}
