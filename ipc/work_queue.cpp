#include "kest/ipc.h"

#include <cstdlib>

#include "util/heap.h"
#include "util/uncancelled.h"

// Order of locks: the mutex of a `sync`, then that of a queue or the `in_use` of that `sync`. Of
// two queues the target of a move comes first. A consumer locks a `sync` only with no queue locked.

namespace {

template <class block>
heap<block> allocate() {
  return heap<block>(static_cast<block *>(malloc(sizeof(block))));
}

// set_count changes the count of a locked queue, which orba_queue_length reads without the lock.
void set_count(orba_queue &queue, uint32_t count) {
  __atomic_store_n(&queue.count, count, __ATOMIC_RELAXED);
}

// append puts a chain of `count` nodes after the elements of a locked queue. `tail` is read only if
// there are any: the node that it points to may be gone.
void append(orba_queue &queue, orba_queue_node *first, orba_queue_node *last, uint32_t count) {
  if (queue.head == nullptr) {
    queue.head = first;
  } else {
    queue.tail->next = first;
  }
  queue.tail = last;
  set_count(queue, queue.count + count);
}

// unlink_oldest takes the oldest node out of a locked queue, or returns null.
orba_queue_node *unlink_oldest(orba_queue &queue) {
  orba_queue_node *node = queue.head;
  if (node != nullptr) {
    queue.head = node->next;
    set_count(queue, queue.count - 1);
  }
  return node;
}

// fill_outputs needs no lock: an unlinked node belongs to the consumer, and a pusher with a `sync`
// waits.
void *fill_outputs(orba_queue_node *node, void **value_out, orba_queue_node **node_out) {
  if (node == nullptr) {
    return nullptr;
  }
  *value_out = node->sync == nullptr ? nullptr : node->sync->value;
  *node_out = node;
  return node->data;
}

// make_locked_sync locks the mutex before a consumer can see it: a consumer gets it only when the
// pusher waits.
heap<orba_queue_sync> make_locked_sync(void *value) {
  heap<orba_queue_sync> sync = allocate<orba_queue_sync>();
  if (sync != nullptr) {
    pthread_mutex_init(&sync->mutex, nullptr);
    pthread_cond_init(&sync->cond, nullptr);
    pthread_mutex_init(&sync->in_use, nullptr);
    sync->value = value;
    sync->done = 0;
    pthread_mutex_lock(&sync->mutex);
  }
  return sync;
}

void unlock(void *mutex) {
  pthread_mutex_unlock(static_cast<pthread_mutex_t *>(mutex));
}

// wait_for_element takes and returns a locked queue. A thread cancelled in the wait unlocks it.
void wait_for_element(orba_queue &queue) {
  pthread_cleanup_push(unlock, &queue.mutex);
  while (queue.head == nullptr) {
    pthread_cond_wait(&queue.cond, &queue.mutex);
  }
  pthread_cleanup_pop(0);
}

// wait_until_done returns when the consumer is done with the element and with `sync`. A condition
// may wake without a signal, so `done` decides. The pusher may see it before the consumer signals,
// and then waits for `in_use`, which the consumer holds. The consumer uses `sync` and the value
// until it is done, so a request to cancel the pusher waits as well.
void wait_until_done(orba_queue_sync &sync) {
  const uncancelled whole;
  while (sync.done == 0) {
    pthread_cond_wait(&sync.cond, &sync.mutex);
  }
  pthread_mutex_unlock(&sync.mutex);
  pthread_mutex_lock(&sync.in_use);
  pthread_mutex_unlock(&sync.in_use);
}

} // namespace

int32_t orba_queue_init(orba_queue *queue) {
  pthread_mutex_init(&queue->mutex, nullptr);
  pthread_cond_init(&queue->cond, nullptr);
  queue->head = nullptr;
  queue->tail = nullptr;
  queue->count = 0;
  return 0;
}

int32_t orba_queue_push(orba_queue *queue, void *data, void *value) {
  heap<orba_queue_node> node = allocate<orba_queue_node>();
  heap<orba_queue_sync> sync;
  if (node == nullptr) {
    return -1;
  }
  if (value != nullptr) {
    sync = make_locked_sync(value);
    if (sync == nullptr) {
      return -1;
    }
  }
  *node = {nullptr, data, sync.get()};
  pthread_mutex_lock(&queue->mutex);
  append(*queue, node.get(), node.get(), 1);
  pthread_cond_signal(&queue->cond);
  pthread_mutex_unlock(&queue->mutex);
  if (sync == nullptr) {
    static_cast<void>(node.release()); // orba_queue_pop_done frees it
    return 0;
  }
  wait_until_done(*sync);
  return 0;
}

void *orba_queue_pop(orba_queue *queue, void **value_out, orba_queue_node **node_out) {
  pthread_mutex_lock(&queue->mutex);
  if (queue->head == nullptr) {
    wait_for_element(*queue);
  }
  orba_queue_node *node = unlink_oldest(*queue);
  pthread_mutex_unlock(&queue->mutex);
  return fill_outputs(node, value_out, node_out);
}

void *orba_queue_pop_without_cond_wait(orba_queue *queue, void **value_out,
                                       orba_queue_node **node_out) {
  pthread_mutex_lock(&queue->mutex);
  orba_queue_node *node = unlink_oldest(*queue);
  pthread_mutex_unlock(&queue->mutex);
  return fill_outputs(node, value_out, node_out);
}

void *orba_queue_trypop(orba_queue *queue, void **value_out, orba_queue_node **node_out) {
  if (pthread_mutex_trylock(&queue->mutex) != 0) {
    return nullptr;
  }
  orba_queue_node *node = unlink_oldest(*queue);
  pthread_mutex_unlock(&queue->mutex);
  return fill_outputs(node, value_out, node_out);
}

void orba_queue_pop_done(orba_queue_node *node) {
  orba_queue_sync *sync = node->sync;
  if (sync == nullptr) {
    free(node);
    return;
  }
  pthread_mutex_lock(&sync->mutex);
  pthread_mutex_lock(&sync->in_use); // before `done`: a pusher that sees `done` waits for it
  sync->done = 1;
  pthread_mutex_unlock(&sync->mutex);
  pthread_cond_signal(&sync->cond);
  pthread_mutex_unlock(&sync->in_use); // the pusher frees `sync` and the node
}

void orba_queue_push_queue(orba_queue *target, orba_queue *source) {
  pthread_mutex_lock(&target->mutex);
  pthread_mutex_lock(&source->mutex);
  if (source->head != nullptr) {
    append(*target, source->head, source->tail, source->count);
  }
  source->head = nullptr;
  source->tail = nullptr;
  set_count(*source, 0);
  pthread_cond_signal(&target->cond);
  pthread_mutex_unlock(&source->mutex);
  pthread_mutex_unlock(&target->mutex);
}

void orba_queue_flush_without_cond_wait(orba_queue *queue) {
  pthread_mutex_lock(&queue->mutex);
  orba_queue_node *node = queue->head;
  queue->head = nullptr;
  set_count(*queue, 0);
  pthread_mutex_unlock(&queue->mutex);
  // With the queue unlocked: a pusher may still hold the mutex of its `sync`, which comes first.
  while (node != nullptr) {
    orba_queue_node *next = node->next;
    free(node->data);
    if (node->sync != nullptr) {
      free(node->sync->value);
    }
    orba_queue_pop_done(node);
    node = next;
  }
}

uint32_t orba_queue_length(const orba_queue *queue) {
  return __atomic_load_n(&queue->count, __ATOMIC_RELAXED);
}
