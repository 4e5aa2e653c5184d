#include "util/uncancelled.h"

#include <pthread.h>

int kest_put_off_cancellation() {
  int state = PTHREAD_CANCEL_ENABLE;
  pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state);
  return state;
}

void kest_restore_cancellation(int state) {
  pthread_setcancelstate(state, &state);
}
