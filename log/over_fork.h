// log/over_fork.h: locks and processes that fork.
#pragma once
#include <pthread.h>

constexpr int KEST_FIRST = 101; // of the constructors of a program, the system's own left out

// kest_hold_over_fork has a process forked only while no other thread holds `mutex`. The child
// finds it free, and so does its parent. It is called as the library is loaded, before a host
// registers handlers of its own: these take their locks first, as a host does that logs under a
// lock.
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
