#include <kest/kest.h>
#include <stdio.h>

uint32_t log_level = 0;             /* what the library logs: KEST_LOG_ERROR, KEST_LOG_DEBUG */
char LOG_FILE[] = "kest.log";       /* where to; "" for nowhere */
uint32_t LOG_FILE_MAX_SIZE = 65536; /* then it becomes kest.log.1 */
char LOG_FILE_COMPRESSED[] = "";

int main(void) {
  /* Send: the octets of the message, as text behind an octet 0: the modem's own service centre. */
  uint8_t pdu[KEST_SMS_SUBMIT_PDU_SIZE];
  uint32_t size = kest_sms_encode_gw_submit_pdu("+4917", "hello", 0, 0, pdu, sizeof pdu);
  char line[2 + 2 * sizeof pdu + 1] = "00";
  kest_binary_to_hexstring_uppercase(pdu, (uint16_t)size, line + 2, sizeof line - 2);
  printf("AT+CMGS=%u\n%s\n", (unsigned)size, line);

  /* Read: number and text; the text comes as hexadecimal text of its UTF-8 form. */
  char number[KEST_SMS_ADDRESS_TEXT_SIZE] = "", text[KEST_SMS_USERDATA_TEXT_SIZE];
  kest_sms_udh_info udh = {0};
  uint32_t decoded = kest_sms_decode_gw_submit_pdu(line, NULL, number, text, &udh);
  printf("%s: %s\n", number, text);
  return decoded == 1 ? 0 : 1;
}
