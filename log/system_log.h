// log/system_log.h: the process's one connection to the system log, which both front ends use.
#pragma once
#include "util/uncancelled.h"

// system_log_lock is held for each call of the C library's system log. The C library locks there
// too, and a forked child could find that lock taken for good. This lock keeps other threads out
// during a fork. No other lock of the library is taken under it.
class system_log_lock {
public:
  system_log_lock() {
    lock();
  }
  ~system_log_lock() {
    unlock();
  }
  system_log_lock(const system_log_lock &) = delete;
  system_log_lock &operator=(const system_log_lock &) = delete;

private:
  static void lock();
  static void unlock();

  const uncancelled whole_;
};
