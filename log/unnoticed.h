// log/unnoticed.h: what the functions of both logs have in common.
#pragma once
#include <cerrno>

#include "util/uncancelled.h"

// unnoticed keeps what a caller does not expect a log to touch: its `errno`, and its life as a
// thread.
struct unnoticed {
  const uncancelled thread;
  const int reason; // of the caller, and so what `%m` means

  unnoticed() : reason(errno) {}
  ~unnoticed() {
    errno = reason;
  }
  unnoticed(const unnoticed &) = delete;
  unnoticed &operator=(const unnoticed &) = delete;
};
