/* named_socket_server NAME: answers each client with how many characters its text has. An empty
 * text ends it. The socket is the file /NAME. */
#include <errno.h>
#include <kest/kest.h>
#include <signal.h>
#include <stdio.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <syslog.h>
#include <unistd.h>

uint32_t log_level = 0; /* the four symbols that a host defines: no debug log here */
char LOG_FILE[] = "";
uint32_t LOG_FILE_MAX_SIZE = 0;
char LOG_FILE_COMPRESSED[] = "";

enum { MAX_TEXT = 255, PATIENCE = 2 }; /* octets, seconds */

/* Reads one text, until the client has no more to send. The result is its size; -1 for a client
 * that has gone, or that sends nothing for PATIENCE seconds: all others wait for it. */
static ssize_t read_text(int client, char *text) {
  struct timeval patience = {PATIENCE, 0};
  if (setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience) != 0) {
    return -1;
  }
  size_t size = 0;
  ssize_t count;
  do {
    count = read(client, text + size, MAX_TEXT - size);
    size += count > 0 ? (size_t)count : 0;
  } while (size < MAX_TEXT && (count > 0 || (count < 0 && errno == EINTR)));
  return count < 0 ? -1 : (ssize_t)size;
}

/* Answers one client. The result is the size of its text, or -1. */
static ssize_t serve(int client) {
  char text[MAX_TEXT + 1] = "", answer[32];
  ssize_t size = read_text(client, text);
  int answer_size = snprintf(answer, sizeof answer, "%d characters\n", (int)strlen_utf8(text));
  if (size < 0 || writen(client, answer, answer_size) < 0) {
    log_message(LOG_WARNING, "a client is silent, or has gone\n");
  }
  return size;
}

/* Serves clients until one has an empty text. The result is 0, or the error that lets none in. */
static int serve_all(int server) {
  ssize_t size = -1;
  while (size != 0) {
    int client = accept(server, NULL, NULL);
    if (client >= 0) {
      size = serve(client);
      close(client);
    } else if (errno != EINTR && errno != ECONNABORTED) { /* these two pass */
      return errno;
    }
  }
  return 0;
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
  int error = serve_all(server);
  close(server); /* for want of descriptors the system log may need this one */
  if (error != 0) {
    log_message(LOG_ERR, "no client can come in (errno=%d)\n", error);
  }
  logging_close();
  return error == 0 ? 0 : 1;
}
