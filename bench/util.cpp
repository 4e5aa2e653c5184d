#include "kest/util.h"

#include <cstdlib>

#include "bench/inputs.h"
#include "bench/job.h"

namespace {

std::function<void()> remove_quotation(size_t size) {
  return [text = '"' + repeated(ENGLISH, size) + '"'] {
    char *quotation = nullptr;
    kest_remove_quotation_mark(text.c_str(), &quotation);
    free(quotation);
  };
}

// insert_back appends to `count` nodes, and deletes that node again.
std::function<void()> insert_back(size_t count) {
  ListNode *head = nullptr;
  for (size_t i = 0; i < count; ++i) {
    head = InsFront(head, 1, 0, 0);
  }
  return [head] {
    InsBack(head, 2, 0, 0);
    DelNode(head, 2);
  };
}

} // namespace

void measure_util(measured &out) {
  out.curves.push_back({"remove quotation marks", "bytes", doubled(65536), remove_quotation});
  out.curves.push_back(
      {"list, insert and delete at the back", "nodes", doubled(65536), insert_back});
}
