/* read_message: reads what a modem hands over of received messages (+CMT, AT+CMGL, AT+CMGR): PDUs
 * in hexadecimal text, one a line of standard input. It prints sender, time, class, place in a long
 * message, and text. Lines that are no SMS-DELIVER are named; then the exit status is 1. */
#include "lines.h"
#include <kest/kest.h>
#include <stdio.h>
#include <string.h>

/* The four symbols that a host defines: no debug log here. To see why a line is refused, decode it
 * again with KEST_LOG_ERROR and a path, and leave out the lines of digits ("hexchar"). */
uint32_t log_level = 0;
char LOG_FILE[] = "";
uint32_t LOG_FILE_MAX_SIZE = 0;
char LOG_FILE_COMPRESSED[] = "";

enum { SENDER_OCTETS = 10 /* an address has no more */ };

/* Prints the sender. That of an alphanumeric one (type of number 5) stands in the PDU as packed
 * septets; the decoder gives them one to a byte, where 0 is a commercial at sign. */
static void print_sender(const uint8_t *pdu, const char *number) {
  const uint8_t *field = pdu + pdu[0] + 2; /* behind the service centre and the first octet */
  if ((field[1] >> 4 & 7) != 5) {
    printf("from %s", number);
    return;
  }
  char text[2 * (SENDER_OCTETS * 8 / 7) + 1] = "";
  int octets = (field[0] + 1) / 2; /* it counts semi-octets */
  octets = octets < SENDER_OCTETS ? octets : SENDER_OCTETS;
  kest_decode_packed_7bit_gsm_string(text, field + 2, (uint16_t)octets);
  printf("from ");
  print_text((const uint8_t *)text, strlen(text));
}

/* The result is 0 for a line that is no SMS-DELIVER. NOTE: one that ends within its text is shown,
 * with what zeros stand for behind it. */
static int read_message(const char *line) {
  /* Zeros stand behind the PDU: whatever its lengths are, the sender's field is within. */
  uint8_t octets[UINT8_MAX + 2 + 2 + SENDER_OCTETS], userdata[KEST_SMS_USERDATA_TEXT_SIZE / 2];
  /* The decoder leaves outputs alone for which it finds nothing. */
  char sender[KEST_SMS_ADDRESS_TEXT_SIZE] = "", timestamp[KEST_SMS_TIME_TEXT_SIZE] = "";
  char text[KEST_SMS_USERDATA_TEXT_SIZE] = "";
  kest_sms_udh_info udh = {0};
  kest_sms_msg_class msg_class = KEST_SMS_CLASS_NONE;
  uint32_t no_text = 0;
  if (octets_of(line, octets, sizeof octets) == 0 ||
      kest_sms_decode_gw_deliver_pdu_v2(line, NULL, sender, timestamp, text, &udh, &msg_class,
                                        &no_text) != 1) {
    return 0;
  }
  if (strncmp(timestamp + 5, "00", 2) == 0) {
    return 0; /* cut off: behind its end a PDU reads as zeros, but there is no such month */
  }
  print_sender(octets, sender);
  printf(", %s", timestamp); /* of the service centre; its zone in quarters of an hour */
  if (msg_class != KEST_SMS_CLASS_NONE) {
    printf(", class %u", (unsigned)msg_class);
  }
  if (udh.total != 0) {
    printf(", segment %u of %u (reference %u)", udh.sequence, udh.total, udh.reference);
  }
  if (no_text != 0) { /* `text` holds the whole PDU, for whoever listens at the port */
    printf("\n  no text: for port %u, from port %u\n", udh.dest_port, udh.orig_port);
    return 1;
  }
  printf("\n  ");
  print_text(userdata, octets_of(text, userdata, sizeof userdata));
  printf("\n");
  return 1;
}

int main(void) {
  return read_lines(read_message) == 0 ? 0 : 1;
}
