/* send_long_message NUMBER TEXT: cuts a text, in UTF-8, into as many messages as it needs. For each
 * it prints what a modem takes: AT+CMGS with the PDU's length, and the PDU behind a service-centre
 * octet 00, with which the modem uses its own. If one of them can't be made, nothing is printed. */
#include <kest/kest.h>
#include <stdio.h>
#include <string.h>

uint32_t log_level = 0; /* the four symbols that a host defines: no debug log here */
char LOG_FILE[] = "";
uint32_t LOG_FILE_MAX_SIZE = 0;
char LOG_FILE_COMPRESSED[] = "";

/* A segment counts its message's segments to 255; KEST_SMS_SIZED_TEXT octets need 32 at most. */
enum { MAX_DIGITS = 20, MAX_PIECES = 32, PIECE_SIZE = 255 /* octets that an encoder reads */ };

/* Writes a text as the encoders take it: of a character above U+FFFF each of its two surrogates in
 * a form of three bytes. The result is -1 for what is no UTF-8, has no room or no code in an SMS.
 */
static int split_surrogates(const char *text, char *out, size_t size) {
  uint16_t units[KEST_SMS_SIZED_TEXT];
  size_t read = 0, written = 0, count = kest_convert_utf8_to_ucs2(text, sizeof units, units) / 2u;
  for (size_t i = 0; i < count; i++) {
    uint16_t alone[] = {units[i], ' '}; /* next to its partner a surrogate would be joined to it */
    if (size - written < sizeof alone * 3 / 2 + 1) {
      return -1;
    }
    size_t length = kest_convert_ucs2_to_utf8(alone, sizeof alone, out + written) - 1u;
    written += length;
    read += (units[i] & 0xF800) == 0xD800 ? 2 : length; /* both together are four octets there */
  }
  out[written] = '\0';
  return text[read] == '\0' ? 0 : -1;
}

/* Returns the octets of the next segment, 0 if there is none that an encoder takes. */
static size_t next_piece(const char *text, int is_long) {
  uint16_t length = (uint16_t)strlen(text); /* at most KEST_SMS_SIZED_TEXT */
  if (is_long && kest_sms_get_long_message_segment(text, 0, &length) < 0) {
    return 0;
  }
  int low = text[length] == '\xED' && (text[length + 1] & 0xF0) == 0xB0;
  size_t cut = low && length > 3 ? length - 3u : length; /* keeps two surrogates together */
  return cut > PIECE_SIZE ? 0 : cut;
}

static int fail(const char *why) {
  fprintf(stderr, "send_long_message: %s\n", why);
  return 1;
}

int main(int argc, char **argv) {
  char text[KEST_SMS_SIZED_TEXT + 7], piece[PIECE_SIZE + 1], hex[2 * KEST_SMS_SUBMIT_PDU_SIZE + 1];
  static char out[MAX_PIECES * (sizeof "AT+CMGS=165\n00\n" + sizeof hex)];
  const char *digits = argc == 3 ? argv[1] + (argv[1][0] == '+') : "";
  size_t starts[MAX_PIECES + 1] = {0}, used = 0, length = strspn(digits, "0123456789*#");
  if (length == 0 || length > MAX_DIGITS || digits[length] != '\0') {
    return fail("usage: send_long_message NUMBER TEXT");
  }
  if (split_surrogates(argv[2], text, sizeof text) != 0) {
    return fail("the text is no UTF-8, or too long");
  }
  int32_t is_long = kest_sms_is_long_message(text, 0), total = 0;
  do {
    starts[total + 1] = starts[total] + next_piece(text + starts[total], is_long != 0);
  } while (text[starts[++total]] != '\0' && total < MAX_PIECES);
  for (int32_t i = 0; i < total; i++) {
    uint8_t pdu[KEST_SMS_SUBMIT_PDU_SIZE];
    snprintf(piece, sizeof piece, "%.*s", (int)(starts[i + 1] - starts[i]), text + starts[i]);
    int32_t size =
        kest_sms_encode_long_gw_submit_pdu(argv[1], piece, 0, 0, total, i + 1, pdu, sizeof pdu);
    if (size <= 0 || text[starts[total]] != '\0') {
      return fail("a segment can't be made");
    }
    kest_binary_to_hexstring_uppercase(pdu, (uint16_t)size, hex, sizeof hex);
    used += (size_t)snprintf(out + used, sizeof out - used, "AT+CMGS=%d\n00%s\n", (int)size, hex);
  }
  fputs(out, stdout);
  return 0;
}
