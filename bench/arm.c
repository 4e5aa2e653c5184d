// arm.c JOB CALLS: makes CALLS calls of the job with this number. bench/arm counts instructions.
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "kest/kest.h"

uint32_t log_level = 0;
char LOG_FILE[1] = "";
uint32_t LOG_FILE_MAX_SIZE = UINT32_MAX;
char LOG_FILE_COMPRESSED[1] = "";

#define NUMBER "+15551234567"
#define TIME "2011/12/31,23:59:58+08"
#define HAN "\xE4\xB8\xAD"

static char text[1024], pdu_text[511], smsc[22], sender[22], timestamp[23], userdata[511];
static uint8_t pdu[KEST_SMS_DELIVER_PDU_SIZE + 1]; // after an empty service-centre field
static kest_sms_udh_info udh;
static kest_sms_msg_class msg_class;
static uint32_t udh_no_concat;

static void fill_text(size_t size) {
  for (size_t i = 0; i < size; ++i) {
    text[i] = (char)('a' + i % 26);
  }
}

static void fill_text_ucs2(size_t characters) {
  for (size_t i = 0; i < characters; ++i) {
    memcpy(text + i * strlen(HAN), HAN, strlen(HAN));
  }
}

static void take_pdu(uint32_t size) {
  kest_binary_to_hexstring(pdu, (uint16_t)(size + 1), pdu_text, sizeof pdu_text);
}

static void no_text(void) {}

static void septets(void) {
  fill_text(160);
}

static void ucs2(void) {
  fill_text_ucs2(70);
}

static void received_septets(void) {
  fill_text(160);
  take_pdu(kest_sms_encode_gw_deliver_pdu(NUMBER, text, TIME, 0, 0, pdu + 1, sizeof pdu - 1));
}

static void received_segment(void) {
  fill_text_ucs2(66);
  take_pdu((uint32_t)kest_sms_encode_long_gw_deliver_pdu(NUMBER, text, TIME, 0, 0, 2, 1, pdu + 1,
                                                         sizeof pdu - 1));
}

static void long_text(void) {
  fill_text(1000);
}

static void encode(void) {
  kest_sms_encode_gw_submit_pdu(NUMBER, text, 0, 0, pdu, KEST_SMS_SUBMIT_PDU_SIZE);
}

static void decode(void) {
  kest_sms_decode_gw_deliver_pdu_v2(pdu_text, smsc, sender, timestamp, userdata, &udh, &msg_class,
                                    &udh_no_concat);
}

static void size_text(void) {
  kest_sms_is_long_message(text, 0);
}

static void to_hex(void) {
  kest_binary_to_hexstring(pdu, 140, pdu_text, sizeof pdu_text);
}

static const struct {
  const char *name;
  void (*prepare)(void);
  void (*call)(void);
} JOBS[] = {
    {"SUBMIT, 160 septets", septets, encode},
    {"SUBMIT, 70 UCS-2 characters", ucs2, encode},
    {"DELIVER, 160 septets", received_septets, decode},
    {"DELIVER, segment of 66 UCS-2 characters", received_segment, decode},
    {"does a text of 1,000 characters fit", long_text, size_text},
    {"hexadecimal text of 140 octets", no_text, to_hex},
};

int main(int argc, char **argv) {
  const size_t job = argc == 3 ? strtoul(argv[1], NULL, 10) : SIZE_MAX;
  if (job >= sizeof JOBS / sizeof *JOBS) {
    return 1;
  }
  JOBS[job].prepare();
  for (unsigned long calls = strtoul(argv[2], NULL, 10); calls > 0; --calls) {
    JOBS[job].call();
  }
  fprintf(stderr, "%s\n", JOBS[job].name);
  return 0;
}
