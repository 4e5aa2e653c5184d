// log/unnoticed.h: what the functions of both logs have in common.
#pragma once
#include <cerrno>

#include "util/uncancelled.h"

// unnoticed keeps `errno` while it lives, and puts off a cancellation of the thread.
struct unnoticed {
  const uncancelled thread;
  const int reason; // the caller's `errno`, which `%m` means

  unnoticed() : reason(errno) {}
  ~unnoticed() {
    errno = reason;
  }
  unnoticed(const unnoticed &) = delete;
  unnoticed &operator=(const unnoticed &) = delete;
};
