/// @file
/// kest/ipc.h: a work queue between threads, named local sockets, and sockets in general.
#ifndef KEST_IPC_H
#define KEST_IPC_H

#include "kest/export.h"

#include <pthread.h>
#include <stdint.h>
#include <sys/types.h>
#include <sys/un.h>

#ifdef __cplusplus
extern "C" {
#endif

/// @defgroup kest_queue Work queue between threads
/// The work queue carries pointers from producers to consumers, first in, first out, without a
/// limit. A producer pushes and goes on, or pushes with a value and waits until a consumer is done.
/// - A consumer owns the `data` of the element that it pops.
/// - It must give the node of the element to orba_queue_pop_done exactly once. Otherwise the node
///   is lost, and its pusher waits forever.
/// - Only `data` and `value` may be null.
/// - Any thread may call these functions at any time, all but orba_queue_init.
/// @{

// The fields of the three records are the queue's own: a host gives the memory of an orba_queue,
// and carries node pointers from a pop to orba_queue_pop_done.

/// orba_queue_sync is where a waiting pusher and a consumer meet. Its fields are the queue's own.
typedef struct orba_queue_sync {
  pthread_mutex_t mutex;  ///< guards `done`; the pusher holds it from before the push to its wait
  pthread_cond_t cond;    ///< `done` has become 1
  void *value;            ///< what the pusher gave, not null
  int32_t done;           ///< 1: the consumer is done with the element
  pthread_mutex_t in_use; ///< the consumer's, until it has touched the record for the last time
} orba_queue_sync;

/// orba_queue_node is one element. Its fields are the queue's own: a host carries a pointer to it
/// from a pop to orba_queue_pop_done.
typedef struct orba_queue_node {
  struct orba_queue_node *next; ///< the next newer one, or null
  void *data;                   ///< the caller's
  orba_queue_sync *sync;        ///< null if nobody waits for the element
} orba_queue_node;

/// orba_queue is a queue in memory of the caller, who must keep it while a thread may use it. Its
/// fields are the queue's own. No function ends a queue.
typedef struct orba_queue {
  pthread_mutex_t mutex; ///< guards the fields below
  pthread_cond_t cond;   ///< elements have arrived
  orba_queue_node *head; ///< the oldest, null if there is none
  orba_queue_node *tail; ///< the newest; of no meaning while `head` is null
  uint32_t count;        ///< elements
} orba_queue;

/// orba_queue_init makes an empty queue, and returns 0. It comes before all others.
KEST_API int32_t orba_queue_init(orba_queue *queue);

/// orba_queue_push appends `data` and wakes one waiting consumer. With a null `value` it returns at
/// once. With any other `value` the call waits for orba_queue_pop_done. Until then the consumer may
/// use what `value` points to. Afterwards the pusher frees it, unless the queue was flushed.
/// It returns 0, or -1 if memory runs out; then nothing is queued.
///
/// NOTE: a flush ends the wait with the result 0 and frees `value`. So a value on the pusher's
/// stack is only for queues that are never flushed. A waiting pusher is cancelled (pthread_cancel)
/// after the wait, for the consumer uses `value`.
KEST_API int32_t orba_queue_push(orba_queue *queue, void *data, void *value);

/// orba_queue_pop takes the oldest element, and waits if there is none. It returns the data of the
/// element. It stores the value, null if nobody waits for it, and the node. A consumer that is
/// cancelled (pthread_cancel) while it waits has taken no element. NOTE: with glibc on ARM and MIPS
/// such a thread runs its handlers of `pthread_cleanup_push` in C, but no destructors of C++.
KEST_API void *orba_queue_pop(orba_queue *queue, void **value_out, orba_queue_node **node_out);

/// orba_queue_pop_without_cond_wait pops without waiting. On an empty queue it returns null and
/// leaves both outputs unchanged. Clear `node_out` first: an element may have null data.
KEST_API void *orba_queue_pop_without_cond_wait(orba_queue *queue, void **value_out,
                                                orba_queue_node **node_out);

/// orba_queue_trypop pops without waiting even for the mutex: while another thread holds that, the
/// queue counts as empty.
KEST_API void *orba_queue_trypop(orba_queue *queue, void **value_out, orba_queue_node **node_out);

/// orba_queue_pop_done ends the work on an element and frees its node. A waiting pusher goes on.
/// The call may block for a moment, until the pusher waits.
KEST_API void orba_queue_pop_done(orba_queue_node *node);

/// orba_queue_push_queue appends all elements of `source` to `target`, another queue, in their
/// order. It wakes one consumer of `target`. NOTE: concurrent moves that form a cycle, such as A to
/// B and B to A, deadlock.
KEST_API void orba_queue_push_queue(orba_queue *target, orba_queue *source);

/// orba_queue_flush_without_cond_wait empties the queue. It calls `free` for the data and the value
/// of each element: each must be a block of its own from `malloc`, or null. Waiting pushers go on.
KEST_API void orba_queue_flush_without_cond_wait(orba_queue *queue);

/// orba_queue_length returns the number of elements. It takes no mutex, so the number may be old.
KEST_API uint32_t orba_queue_length(const orba_queue *queue);

/// @}

/// @defgroup kest_named_sockets Named local sockets
/// Named local sockets (AF_UNIX). A name has no leading slash and counts from the root directory:
/// "run/kest/at" is /run/kest/at. A path is cut after its 107th character. All steps and failures
/// are logged by log_message (log.h). `type` goes to `socket` as it is: SOCK_STREAM or SOCK_DGRAM,
/// to which SOCK_CLOEXEC and SOCK_NONBLOCK may be added. Results are descriptors, which the caller
/// closes, or -1; then no descriptor stays open, and `errno` has no meaning, but for writen. Any
/// thread may call these functions.
/// @{

/// writen writes the `n` octets of `buf` by as many calls of `write` as that takes, and returns
/// `n`. Signals do not interrupt it. It returns -1 on any other failure, with the `errno` of
/// `write`, or 0 there if `write` wrote nothing without an error. A part may have been written. An
/// `n` of 0 or below writes nothing. A writer that waits for its peer is not cancelled; `shutdown`
/// ends it with -1. NOTE: writing to a peer that has gone raises SIGPIPE, unless the host ignores
/// it.
KEST_API int32_t writen(int fd, const void *buf, int32_t n);

/// connect_socket_server connects to a socket whose file the process's real user may read.
KEST_API int connect_socket_server(const char *name, int type);

/// create_socket binds a new socket and gives its file an owner, a group and a mode, as `chown` and
/// `chmod` take them, without a report if these two fail. Whatever file has that name is removed
/// before; a directory is not, and gives -1. A stream server calls `listen` itself. NOTE: until the
/// mode is set the file has that of the process's umask. Owner and mode are set by path: where
/// others may write to the folder, they can put a file of their own in the place of the socket. So
/// the host alone owns the folder.
KEST_API int create_socket(const char *name, int type, mode_t mode, uid_t owner, gid_t group);

/// create_socket_addr does so and stores the address that it bound in `addr_out`, which may be
/// null; on failure it leaves `addr_out` as it was.
KEST_API int create_socket_addr(const char *name, struct sockaddr_un *addr_out, int type,
                                mode_t mode, uid_t owner, gid_t group);

/// @}

/// @defgroup kest_usock Sockets by host and service
/// Stream and datagram sockets by host and service, or by path.
/// @{

/// Flags of usock. The low octet is the type, SOCK_DGRAM if it is not 0; the others are bits.
enum {
  USOCK_FLAG_STREAM = 0,            ///< SOCK_STREAM
  USOCK_FLAG_DATAGRAM = 1,          ///< SOCK_DGRAM
  USOCK_FLAG_SERVER = 0x0100,       ///< bind, with SO_REUSEADDR, and listen on a stream socket with
                                    ///< a backlog of 128; otherwise connect
  USOCK_FLAG_KEEP_ON_EXEC = 0x0200, ///< without FD_CLOEXEC
  USOCK_FLAG_NONBLOCKING = 0x0400,  ///< O_NONBLOCK on the finished descriptor
  USOCK_FLAG_NUMERIC_HOST = 0x0800, ///< the host is a numeric address
  USOCK_FLAG_IPV6 = 0x2000,         ///< IPv6 alone, also together with the next one
  USOCK_FLAG_IPV4 = 0x4000,         ///< IPv4 alone
  USOCK_FLAG_LOCAL_PATH = 0x8000    ///< the host is the path of a local socket
};

/// usock opens a socket for a host and a service, as `getaddrinfo` takes them; one of the two may
/// be null. It takes the first of their addresses that can be bound or connected. Only families
/// that the machine has configured count (AI_ADDRCONFIG).
///
/// With USOCK_FLAG_LOCAL_PATH `host` is a path of 1 to 107 characters, not null. `service` and the
/// flags of addresses are ignored. A server fails if the file exists.
///
/// Returns a descriptor, which the caller closes, or -1. Then `errno` has the fault of the last
/// step, EINVAL for a path that is too long; it has no meaning if the names did not resolve. Any
/// thread may call it.
///
/// NOTE: a client connects blocking, even with USOCK_FLAG_NONBLOCKING. FD_CLOEXEC is set last, so a
/// child that is made before inherits the descriptor. A datagram client takes any address, with or
/// without a server; name a host or a family where both are possible.
KEST_API int usock(uint32_t flags, const char *host, const char *service);

/// @}

#ifdef __cplusplus
}
#endif

#endif
