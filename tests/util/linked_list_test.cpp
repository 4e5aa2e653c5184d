#include "kest/util.h"

#include "tests/support/rows.h"

namespace {
ListNode *list = nullptr; // that rows work on
}

template <>
ListNode *argument(const json &) {
  return list;
}

template <>
json shown(ListNode *head) {
  list = head;
  json nodes = json::array();
  for (; head != nullptr; head = head->next) {
    nodes.push_back({head->id, head->data, head->value});
  }
  return nodes;
}

TEST(LinkedList, StepsAndWhatTheyPrint) {
  run_rows("util/linked_list",
           {KEST_CALL(InsFront), KEST_CALL(InsBack), KEST_CALL(InsPos), KEST_CALL(DelNode),
            KEST_CALL(DelNodeByData)},
           [] {
             while (list != nullptr) {
               list = DelNode(list, list->id);
             }
           });
}
