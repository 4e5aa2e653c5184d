/* A worker thread makes messages of texts. A producer hands over a text and goes on; one that needs
 * to know what became of it waits. */
#include <kest/kest.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

uint32_t log_level = 0; /* the four symbols that a host defines: no log here */
char LOG_FILE[] = "";
uint32_t LOG_FILE_MAX_SIZE = 0;
char LOG_FILE_COMPRESSED[] = "";

/* Takes texts until it gets none, a null pointer. Who pops a text owns it. */
static void *work(void *argument) {
  orba_queue *queue = argument;
  for (;;) {
    void *size_out;
    orba_queue_node *node;
    char *text = orba_queue_pop(queue, &size_out, &node);
    if (text == NULL) {
      orba_queue_pop_done(node);
      return NULL;
    }
    uint8_t pdu[KEST_SMS_SUBMIT_PDU_SIZE];
    uint32_t size = kest_sms_encode_gw_submit_pdu("+4917", text, 0, 0, pdu, sizeof pdu);
    printf("worker: %s\n", text);
    free(text);
    if (size_out != NULL) {
      *(uint32_t *)size_out = size; /* somebody waits for it */
    }
    orba_queue_pop_done(node); /* once for each node; who waits goes on */
  }
}

/* The result is 0 if the text has reached the queue. */
static int push(orba_queue *queue, const char *text, uint32_t *size_out) {
  size_t size = strlen(text) + 1;
  char *copy = malloc(size);
  if (copy == NULL) {
    return -1;
  }
  memcpy(copy, text, size);
  if (orba_queue_push(queue, copy, size_out) != 0) {
    free(copy);
    return -1;
  }
  return 0;
}

int main(void) {
  orba_queue queue;
  pthread_t worker;
  uint32_t size = 0;
  orba_queue_init(&queue);
  if (pthread_create(&worker, NULL, work, &queue) != 0) {
    return 1;
  }
  int failed = push(&queue, "one", NULL) + push(&queue, "two", NULL);
  failed += push(&queue, "three", &size); /* returns when the worker is done with it */
  printf("main: %u octets\n", (unsigned)size);
  failed += orba_queue_push(&queue, NULL, NULL);
  pthread_join(worker, NULL);
  return failed == 0 ? 0 : 1;
}
