// fuzz/require.h: what a fuzz target holds its functions to.
#pragma once
#include <cstdlib>
#include <string>

inline void require(bool condition) {
  if (!condition) {
    abort();
  }
}

// c_text is the text up to its first NUL, which is all that a function in C sees of it.
inline std::string c_text(const std::string &text) {
  return text.substr(0, text.find('\0'));
}
