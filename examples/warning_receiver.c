/* warning_receiver: shows what cells broadcast, warnings (ETWS, CMAS) and other messages. Standard
 * input has one page, or one UMTS message, a line, in hexadecimal text. A network repeats its pages
 * for hours: one that was shown is dropped. Pages are shown as they come, for a warning can't wait
 * until the last one is there. Lines that are no page are named; then the exit status is 1. */
#include "lines.h"
#include <kest/kest.h>
#include <stdio.h>

/* The four symbols that a host defines: no debug log here. To see why a line is refused, decode it
 * again with KEST_LOG_ERROR and a path, and leave out the lines of digits ("hexchar"). */
uint32_t log_level = 0;
char LOG_FILE[] = "";
uint32_t LOG_FILE_MAX_SIZE = 0;
char LOG_FILE_COMPRESSED[] = "";

/* Octets of what is looked at, up to the header and the 15 pages of UMTS; pages kept in mind. */
enum { MIN_OCTETS = 6, MAX_OCTETS = 7 + 15 * 83, SHOWN = 64 };

/* Tells whether a page is one of the last that were shown, and takes it among them if not. An
 * update has another serial number; an ETWS warning and its text may have the same one. */
static int was_shown(const kest_sms_cb_info *info) {
  static uint64_t shown[SHOWN]; /* 0 is none: strangers can't make it grow */
  static unsigned next;
  uint64_t page = (uint64_t)info->format << 40 | (uint64_t)info->page_number << 32 |
                  (uint64_t)info->message_identifier << 16 | info->serial_number;
  for (size_t i = 0; i < SHOWN; i++) {
    if (shown[i] == page) {
      return 1;
    }
  }
  shown[next++ % SHOWN] = page; /* in place of the oldest */
  return 0;
}

static void show_heading(const kest_sms_cb_info *info) {
  static const char *const ETWS[] = {"earthquake", "tsunami", "earthquake and tsunami",
                                     "test",       "other",   "reserved"};
  static const char *const CMAS[] = {"of unknown class", "presidential",    "extreme",
                                     "severe",           "child abduction", "monthly test",
                                     "exercise",         "operator defined"};
  static const char *const URGENCY[] = {"", ", immediate", ", expected"};
  static const char *const CERTAINTY[] = {"", ", observed", ", likely"};
  unsigned etws = info->message_identifier - 0x1100u, cmas = info->message_identifier - 4370u;
  if (etws < 8) {
    printf("%sETWS %s%s", info->emergency_user_alert != 0 ? "ALERT " : "",
           ETWS[etws < 5 ? etws : 5], info->popup != 0 ? ", show at once" : "");
  } else if (cmas < 30) { /* tests and exercises do not alert; a class of the future does */
    printf("%sCMAS %s%s%s", info->cmas_class < 4 ? "ALERT " : "", CMAS[info->cmas_class + 1],
           URGENCY[info->cmas_urgency + 1], CERTAINTY[info->cmas_certainty + 1]);
  } else {
    printf("message %u", info->message_identifier);
  }
  printf(", serial number 0x%04X", info->serial_number);
}

static int receive(const char *line) {
  uint8_t octets[MAX_OCTETS], utf8[KEST_SMS_CB_TEXT_SIZE / 2];
  char text[KEST_SMS_CB_TEXT_SIZE] = ""; /* stays so where there is no text */
  kest_sms_cb_info info;
  uint16_t size = octets_of(line, octets, sizeof octets);
  if (size < MIN_OCTETS || kest_sms_decode_gw_cb_pdu(octets, size, text, &info) != 1 ||
      info.page_number > info.total_pages) {
    return 0;
  }
  if (was_shown(&info)) {
    return 1;
  }
  show_heading(&info);
  if (info.format == KEST_CB_FORMAT_GSM) { /* a UMTS message has all of its pages in it */
    printf(", page %u of %u", info.page_number, info.total_pages);
  }
  printf("%s%s%s", info.timestamp[0] != '\0' ? ", " : "", info.timestamp,
         text[0] != '\0' ? "\n  " : "");
  print_text(utf8, octets_of(text, utf8, sizeof utf8));
  printf("\n");
  return 1;
}

int main(void) {
  return read_lines(receive) == 0 ? 0 : 1;
}
