#include "kest/util.h"

#include <cstdio>
#include <cstdlib>

#include "util/uncancelled.h"

namespace {

// say puts off a cancellation: the caller would lose a node that is in the list already.
void say(const char *message) {
  const uncancelled whole;
  printf("%s", message);
}

// make_node prints a message and returns null if memory runs out.
ListNode *make_node(uint8_t id, int32_t data, uint8_t value) {
  auto *node = static_cast<ListNode *>(malloc(sizeof(ListNode)));
  if (node == nullptr) {
    say(" Out of Memory !! Overflow !!!");
    return nullptr;
  }
  *node = {id, data, value, nullptr};
  return node;
}

void insert_at(ListNode *&link, ListNode *node) {
  node->next = link;
  link = node;
}

// delete_first removes the first node that `matches`.
template <class predicate>
ListNode *delete_first(ListNode *head, const predicate &matches) {
  if (head == nullptr) {
    say(" Underflow!!!");
    return nullptr;
  }
  ListNode **link = &head;
  while (*link != nullptr && !matches(**link)) {
    link = &(*link)->next;
  }
  ListNode *node = *link;
  if (node == nullptr) {
    say(" Invalid Student Id !!!");
    return head;
  }
  *link = node->next;
  free(node);
  return head;
}

} // namespace

ListNode *InsFront(ListNode *head, uint8_t id, int32_t data, uint8_t value) {
  ListNode *node = make_node(id, data, value);
  if (node == nullptr) {
    return head;
  }
  insert_at(head, node);
  say(" Node has been inserted at Front Successfully !!");
  return head;
}

ListNode *InsBack(ListNode *head, uint8_t id, int32_t data, uint8_t value) {
  ListNode *node = make_node(id, data, value);
  if (node == nullptr) {
    return head;
  }
  if (head == nullptr) {
    return node;
  }
  ListNode *last = head;
  while (last->next != nullptr) {
    last = last->next;
  }
  last->next = node;
  say(" Node has been inserted at Back Successfully !!");
  return head;
}

ListNode *InsPos(ListNode *head, uint8_t id, int32_t data, uint8_t value, int32_t position) {
  ListNode *node = make_node(id, data, value);
  if (node == nullptr) {
    return head;
  }
  if (position == 1) {
    insert_at(head, node);
    return head;
  }
  ListNode **link = &head;
  for (int32_t at = 1; *link != nullptr && at < position; ++at) {
    link = &(*link)->next;
  }
  if (position < 1 || *link == nullptr) {
    say(" Invalid Position !!!");
    free(node);
    return head;
  }
  insert_at(*link, node);
  say(" Node has been inserted at given Position  Successfully !!");
  return head;
}

ListNode *DelNode(ListNode *head, uint8_t id) {
  return delete_first(head, [id](const ListNode &node) { return node.id == id; });
}

ListNode *DelNodeByData(ListNode *head, int32_t data) {
  return delete_first(head, [data](const ListNode &node) { return node.data == data; });
}
