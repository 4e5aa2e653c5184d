/* named_socket_client NAME TEXT: asks named_socket_server how many characters a text has. */
#include <kest/kest.h>
#include <stdio.h>
#include <string.h>
#include <sys/socket.h>
#include <syslog.h>
#include <unistd.h>

uint32_t log_level = 0; /* the four symbols that a host defines: no debug log here */
char LOG_FILE[] = "";
uint32_t LOG_FILE_MAX_SIZE = 0;
char LOG_FILE_COMPRESSED[] = "";

int main(int argc, char **argv) {
  if (argc != 3) {
    return 2;
  }
  log_priority = LOG_WARNING; /* a server that is not there yet is no news */
  int server = connect_socket_server(argv[1], SOCK_STREAM);
  if (server < 0) {
    return 1;
  }
  ssize_t count = -1;
  if (writen(server, argv[2], (int32_t)strlen(argv[2])) >= 0 && shutdown(server, SHUT_WR) == 0) {
    char answer[32];
    while ((count = read(server, answer, sizeof answer)) > 0) {
      fwrite(answer, 1, (size_t)count, stdout);
    }
  }
  close(server);
  return count == 0 ? 0 : 1;
}
