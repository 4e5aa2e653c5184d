/* A host that cancels its threads and forks while others log. Each step ends, and leaves the
 * library in working order: a step that hangs is ended by the alarm. */
#include <errno.h>
#include <kest/kest.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <syslog.h>
#include <unistd.h>

uint32_t log_level = KEST_LOG_ERROR;
char LOG_FILE[] = "rough.log";
uint32_t LOG_FILE_MAX_SIZE = UINT32_MAX;
char LOG_FILE_COMPRESSED[] = "";

enum { ROUNDS = 100, STEP_SECONDS = 60 };

static void step(const char *what, int holds) {
  printf("%s: %s\n", what, holds ? "yes" : "NO");
  fflush(stdout);
  alarm(STEP_SECONDS);
}

static void write_debug_log(void) {
  kest_log(1, "%s\n", "a line");
}
static void write_system_log(void) {
  log_message(LOG_ERR, "%s\n", "a line");
}
static void write_typed_log(void) {
  _tulp_pr(0, LOG_ERR, "%s\n", "a line");
}
static void open_system_log(void) {
  logging_init("rough_host");
}
static void *repeat(void *function) {
  for (;;) {
    ((void (*)(void))(uintptr_t)function)();
    pthread_testcancel();
  }
  return NULL;
}

/* The result is 1 if each thread ended by its cancellation. Then other threads can log. */
static int cancel_while(void (*function)(void)) {
  int cancelled = 0;
  for (int i = 0; i < ROUNDS; i++) {
    pthread_t thread;
    void *result;
    pthread_create(&thread, NULL, repeat, (void *)(uintptr_t)function);
    usleep((useconds_t)(i % 20 * 20));
    pthread_cancel(thread);
    pthread_join(thread, &result);
    function();
    cancelled += result == PTHREAD_CANCELED;
  }
  return cancelled == ROUNDS;
}

/* The result is 1 if each child could log while another thread of its parent did. */
static int fork_while(void (*function)(void)) {
  int ended = 0;
  pthread_t thread;
  pthread_create(&thread, NULL, repeat, (void *)(uintptr_t)function);
  for (int i = 0; i < ROUNDS; i++) {
    pid_t child = fork();
    if (child == 0) {
      alarm(STEP_SECONDS / 2);
      function();
      _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    ended += status == 0;
  }
  pthread_cancel(thread);
  pthread_join(thread, NULL);
  return ended == ROUNDS;
}

static int all_records_are_whole(void) {
  const char end[] = ", a line\n";
  char line[128];
  int whole = 1;
  FILE *file = fopen(LOG_FILE, "rb");
  while (file != NULL && fgets(line, sizeof line, file) != NULL) {
    size_t size = strlen(line) - 1; /* without the line feed of the record */
    for (size_t i = 0; i < size; i++) {
      line[i] = (char)~line[i];
    }
    line[size] = '\0';
    whole &= line[0] == '2' && size > strlen(end) && strcmp(line + size - strlen(end), end) == 0;
  }
  return file != NULL && fclose(file) == 0 && whole;
}

static orba_queue queue;

static void *pop(void *unused) {
  void *value;
  orba_queue_node *node;
  (void)unused;
  return orba_queue_pop(&queue, &value, &node);
}
static void *push_and_wait(void *value) {
  orba_queue_push(&queue, "element", value);
  pthread_testcancel();
  return NULL;
}

/* A consumer that waits can be cancelled. A pusher goes on until its element is done with. */
static int cancel_at_queue(void) {
  int holds = 1;
  for (int i = 0; i < ROUNDS; i++) {
    pthread_t consumer, pusher;
    void *result, *value;
    orba_queue_node *node;
    int number = 1;
    pthread_create(&consumer, NULL, pop, NULL);
    usleep((useconds_t)(i % 20 * 20));
    pthread_cancel(consumer);
    pthread_join(consumer, &result);
    holds &= result == PTHREAD_CANCELED;
    pthread_create(&pusher, NULL, push_and_wait, &number);
    orba_queue_pop(&queue, &value, &node);
    pthread_cancel(pusher);
    *(int *)value = 2; /* still the pusher's, and still there */
    orba_queue_pop_done(node);
    pthread_join(pusher, &result);
    holds &= result == PTHREAD_CANCELED && number == 2;
  }
  return holds;
}

enum { OCTETS = 1 << 20 /* more than a pipe takes at once */ };
static int ends[2];

static void *write_all(void *octets) {
  writen(ends[1], octets, OCTETS);
  pthread_testcancel();
  return NULL;
}

/* A writer goes on until all is written. */
static int cancel_writer(void) {
  static char octets[OCTETS], read_octets[4096];
  void *result;
  pthread_t writer;
  ssize_t size, all = 0;
  if (pipe(ends) != 0) {
    return 0;
  }
  pthread_create(&writer, NULL, write_all, octets);
  usleep(20000);
  pthread_cancel(writer);
  while (all < OCTETS && (size = read(ends[0], read_octets, sizeof read_octets)) > 0) {
    all += size;
  }
  pthread_join(writer, &result);
  return result == PTHREAD_CANCELED && all == OCTETS;
}

static int keeps_errno(void (*function)(void)) {
  errno = ENOTTY;
  function();
  return errno == ENOTTY;
}

int main(void) {
  alarm(STEP_SECONDS);
  step("kest_log cancelled", cancel_while(write_debug_log));
  step("log_message cancelled", cancel_while(write_system_log));
  step("_tulp_pr cancelled", cancel_while(write_typed_log));
  step("child of kest_log logs", fork_while(write_debug_log));
  step("child of log_message logs", fork_while(write_system_log));
  step("child of _tulp_pr logs", fork_while(write_typed_log));
  step("child of logging_init opens the log", fork_while(open_system_log));
  step("records are whole", all_records_are_whole());
  orba_queue_init(&queue);
  step("queue cancelled", cancel_at_queue());
  step("writen cancelled", cancel_writer());
  strcpy(LOG_FILE, "/no/log");
  step("errno is kept", keeps_errno(write_debug_log) && keeps_errno(write_system_log) &&
                            keeps_errno(write_typed_log));
  return 0;
}
