// log/over_fork.h: locks and processes that fork.
#pragma once
#include <pthread.h>

constexpr int KEST_FIRST = 101; // the first constructor after the system's own

// kest_hold_over_fork lets a fork wait until no other thread holds `mutex`. Parent and child find
// it free. It is called at load, before a host registers handlers of its own. Those run first, so
// the host's locks come before `mutex`, as when a host logs under a lock.
template <pthread_mutex_t &mutex>
void kest_hold_over_fork() {
  const auto lock = [] {
    pthread_mutex_lock(&mutex);
  };
  const auto unlock = [] {
    pthread_mutex_unlock(&mutex);
  };
  pthread_atfork(lock, unlock, unlock);
}
