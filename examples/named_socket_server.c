/* named_socket_server NAME: tells each client how many characters its text has. An empty text ends
 * it. The socket is the file /NAME. */
#include <kest/kest.h>
#include <signal.h>
#include <stdio.h>
#include <sys/socket.h>
#include <syslog.h>
#include <unistd.h>

uint32_t log_level = 0; /* the four symbols that a host defines: no debug log here */
char LOG_FILE[] = "";
uint32_t LOG_FILE_MAX_SIZE = 0;
char LOG_FILE_COMPRESSED[] = "";

/* Reads one text, until the client has no more to send, and answers. The result is its length. */
static int32_t serve(int client) {
  char text[256], answer[32];
  size_t size = 0;
  ssize_t count;
  while (size < sizeof text - 1 &&
         (count = read(client, text + size, sizeof text - 1 - size)) > 0) {
    size += (size_t)count;
  }
  text[size] = '\0';
  int32_t length = (int32_t)strlen_utf8(text);
  int answer_size = snprintf(answer, sizeof answer, "%d characters\n", length);
  if (writen(client, answer, answer_size) < 0) {
    log_message(LOG_WARNING, "a client has gone\n");
  }
  return length;
}

int main(int argc, char **argv) {
  if (argc != 2) {
    return 2;
  }
  signal(SIGPIPE, SIG_IGN); /* a client that has gone is no reason to end */
  logging_init("named_socket_server");
  log_priority = LOG_WARNING;
  int server = create_socket(argv[1], SOCK_STREAM, 0660, getuid(), getgid());
  if (server < 0 || listen(server, 4) != 0) {
    return 1; /* the system log says why */
  }
  int32_t length = 1;
  while (length > 0) {
    int client = accept(server, NULL, NULL);
    if (client >= 0) {
      length = serve(client);
      close(client);
    }
  }
  close(server);
  logging_close();
  return 0;
}
