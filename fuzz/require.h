// fuzz/require.h: what a fuzz target holds its functions to.
#pragma once
#include <cstdlib>

inline void require(bool condition) {
  if (!condition) {
    abort();
  }
}
