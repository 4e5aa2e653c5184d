// util/heap.h: blocks of `malloc`, which go back by themselves.
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
