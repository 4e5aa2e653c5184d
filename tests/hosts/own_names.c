/* A host that has functions of its own named like the library's. The library goes on calling its
 * own. */
#include <kest/kest.h>
#include <stdio.h>
#include <string.h>
#include <sys/socket.h>

uint32_t log_level = KEST_LOG_DEBUG | KEST_LOG_ERROR;
char LOG_FILE[] = "";
uint32_t LOG_FILE_MAX_SIZE = 0;
char LOG_FILE_COMPRESSED[] = "";

void log_message(int32_t pri, const char *fmt, ...) {
  printf("the host's log_message %d %s\n", (int)pri, fmt);
}
void kest_log(uint32_t mask, const char *format, ...) {
  printf("the host's kest_log %u %s\n", (unsigned)mask, format);
}
int32_t writen(int fd, const void *buf, int32_t n) {
  printf("the host's writen %d %s %d\n", fd, (const char *)buf, (int)n);
  return n;
}
void kest_binary_to_hexstring(const uint8_t *data, uint16_t data_len, char *str,
                              uint16_t str_size) {
  printf("the host's kest_binary_to_hexstring %d\n", data[0] + data_len + str_size);
  strcpy(str, "");
}

int main(void) {
  char text[KEST_SMS_USERDATA_TEXT_SIZE] = "";
  kest_sms_decode_gw_deliver_pdu("00040481214300000910321105022305E8329BFD06", NULL, NULL, NULL,
                                 text, NULL);
  puts(text);
  connect_socket_server("nowhere/at/all", SOCK_STREAM);
  writen(-1, "text", 0);
  return 0;
}
