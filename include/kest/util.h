/// @file
/// kest/util.h: a small linked list, and helpers for processes and strings.
#ifndef KEST_UTIL_H
#define KEST_UTIL_H

#include "kest/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// @defgroup kest_list Linked list
/// A list of numbers. The caller holds the head, null for an empty list. Each function returns the
/// new head, and prints its outcome to standard output without a line feed. No lock guards a list.
/// Nodes come from `malloc`; DelNode until the head is null frees them all.
/// @{

/// ListNode is one node of a list.
typedef struct ListNode {
  uint8_t id;            ///< the caller's; need not be unique
  int32_t data;          ///< the caller's; need not be unique
  uint8_t value;         ///< the caller's
  struct ListNode *next; ///< null at the end
} ListNode;

/// InsFront puts a new node before all others. Without memory the three inserting functions print
/// that and leave the list unchanged.
KEST_API ListNode *InsFront(ListNode *head, uint8_t id, int32_t data, uint8_t value);

/// InsBack appends a new node. On an empty list it prints nothing.
KEST_API ListNode *InsBack(ListNode *head, uint8_t id, int32_t data, uint8_t value);

/// InsPos puts a new node before the one at `position`, counted from 1. At 1 it becomes the head,
/// also of an empty list, and nothing is printed. Any other position without a node is invalid, so
/// InsPos can't append; the list is unchanged.
KEST_API ListNode *InsPos(ListNode *head, uint8_t id, int32_t data, uint8_t value,
                          int32_t position);

/// DelNode removes and frees the first node with this `id`. It prints only if there is none.
KEST_API ListNode *DelNode(ListNode *head, uint8_t id);

/// DelNodeByData removes and frees the first node with this `data`. It prints only if there is
/// none.
KEST_API ListNode *DelNodeByData(ListNode *head, int32_t data);

/// @}

/// @defgroup kest_helpers Helpers for processes and strings
/// None of them keeps a state; any thread may call them.
/// @{

/// kest_get_pid_by_name returns the id of the first process, in the order of /proc, whose name
/// contains `name`, which must not be null. The name is the first argument of its command line:
/// only its first 511 octets, or those before a line feed, are searched. The calling process counts
/// too; one without a command line does not. An empty `name` finds any. Returns -1 if /proc can't
/// be opened, and -2 if there is no such process.
KEST_API int32_t kest_get_pid_by_name(const char *name);

/// kest_remove_quotation_mark stores what stands between the first two double quotes of `str` in a
/// new block, `*out`, and returns its octets. The caller must `free` the block.
/// Only blanks (0x20) may precede the first quote; what follows the second is ignored. It prints
/// the length and the text to standard output.
///
/// Returns 0
/// - with a null `*out` for a null or empty `str`, another character before the first quote, or if
///   memory runs out;
/// - with a block, which the caller must free, for an empty quotation and for blanks alone;
/// - for a null `out`.
///
/// NOTE: the text ends in a NUL only if there is a second quote. Without one all that follows the
/// first is taken, and only the result gives its length.
KEST_API int32_t kest_remove_quotation_mark(const char *str, char **out);

/// convert_2s_complement_to_int reads the low 8 bits of `value` as a signed field of six bits: 0 to
/// 31 are themselves, 32 to 63 are -32 to -1. From 64 on it is no such field, and the result is
/// -((0 - `value`) modulo 64): 0 for 64, -63 for 65, -1 for 255.
KEST_API int32_t convert_2s_complement_to_int(uint32_t value);

/// @}

#ifdef __cplusplus
}
#endif

#endif
