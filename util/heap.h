// util/heap.h: blocks of `malloc` that free themselves.
#pragma once
#include <cstdlib>
#include <memory>

struct free_block {
  void operator()(void *block) const {
    free(block);
  }
};
template <class content>
using heap = std::unique_ptr<content, free_block>;
