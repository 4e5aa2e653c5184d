/* usock_datagram TEXT: a server on 127.0.0.1, at a port that the system picks, and a client that
 * sends it a text and gets it back. */
#include <kest/kest.h>
#include <netinet/in.h>
#include <stdio.h>
#include <string.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

uint32_t log_level = 0; /* the four symbols that a host defines: no debug log here */
char LOG_FILE[] = "";
uint32_t LOG_FILE_MAX_SIZE = 0;
char LOG_FILE_COMPRESSED[] = "";

static int exchange(int server, int client, const char *text) {
  char request[256], answer[256];         /* what is longer is cut */
  const struct timeval patience = {5, 0}; /* datagrams can get lost */
  struct sockaddr_in from = {0};
  socklen_t size = sizeof from;
  setsockopt(server, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  if (send(client, text, strlen(text), 0) < 0) {
    return -1;
  }
  ssize_t count = recvfrom(server, request, sizeof request, 0, (struct sockaddr *)&from, &size);
  if (count < 0 || sendto(server, request, (size_t)count, 0, (struct sockaddr *)&from, size) < 0) {
    return -1;
  }
  count = recv(client, answer, sizeof answer, 0);
  printf("%.*s\n", (int)(count < 0 ? 0 : count), answer);
  return count < 0 ? -1 : 0;
}

int main(int argc, char **argv) {
  const uint32_t flags = USOCK_FLAG_DATAGRAM | USOCK_FLAG_IPV4 | USOCK_FLAG_NUMERIC_HOST;
  struct sockaddr_in bound = {0};
  socklen_t size = sizeof bound;
  int result = -1, client = -1, server = usock(flags | USOCK_FLAG_SERVER, "127.0.0.1", "0");
  if (argc == 2 && server >= 0 && getsockname(server, (struct sockaddr *)&bound, &size) == 0) {
    char port[8];
    snprintf(port, sizeof port, "%u", (unsigned)ntohs(bound.sin_port));
    client = usock(flags, "127.0.0.1", port);
    result = client >= 0 ? exchange(server, client, argv[1]) : -1;
  }
  close(client); /* -1 is none */
  close(server);
  return result == 0 ? 0 : 1;
}
