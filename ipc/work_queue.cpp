#include "kest/ipc.h"

#include <cstdlib>

#include "util/heap.h"
#include "util/uncancelled.h"

// Order of locks: the mutex of a record, then that of a queue or the `in_use` of the record; of two
// queues the target of a move comes first. A consumer takes those of a record with no queue locked.

namespace {

template <class record>
heap<record> allocate() {
  return heap<record>(static_cast<record *>(malloc(sizeof(record))));
}

// set_count changes the count of a locked queue, which orba_queue_length reads without the lock.
void set_count(orba_queue &queue, uint32_t count) {
  __atomic_store_n(&queue.count, count, __ATOMIC_RELAXED);
}

// append puts a chain of `count` nodes behind the elements of a locked queue. `tail` is looked at
// only while there are any: the node that it points to may be gone.
void append(orba_queue &queue, orba_queue_node *first, orba_queue_node *last, uint32_t count) {
  if (queue.head == nullptr) {
    queue.head = first;
  } else {
    queue.tail->next = first;
  }
  queue.tail = last;
  set_count(queue, queue.count + count);
}

// unlink_oldest takes the oldest node, if any, out of a locked queue.
orba_queue_node *unlink_oldest(orba_queue &queue) {
  orba_queue_node *node = queue.head;
  if (node != nullptr) {
    queue.head = node->next;
    set_count(queue, queue.count - 1);
  }
  return node;
}

// deliver fills the outputs of a pop. A node that has been unlinked belongs to the consumer, and
// the pusher of a record waits, so that no lock is needed.
void *deliver(orba_queue_node *node, void **value_out, orba_queue_node **node_out) {
  if (node == nullptr) {
    return nullptr;
  }
  *value_out = node->sync == nullptr ? nullptr : node->sync->value;
  *node_out = node;
  return node->data;
}

// make_record makes a record whose mutex is locked, before a consumer can see it: a consumer gets
// that mutex only when the pusher is in its wait.
heap<orba_queue_sync> make_record(void *value) {
  heap<orba_queue_sync> record = allocate<orba_queue_sync>();
  if (record != nullptr) {
    pthread_mutex_init(&record->mutex, nullptr);
    pthread_cond_init(&record->cond, nullptr);
    pthread_mutex_init(&record->in_use, nullptr);
    record->value = value;
    record->done = 0;
    pthread_mutex_lock(&record->mutex);
  }
  return record;
}

void unlock(void *mutex) {
  pthread_mutex_unlock(static_cast<pthread_mutex_t *>(mutex));
}

// wait_for_element waits with the queue locked. A thread that is cancelled meanwhile unlocks it.
void wait_for_element(orba_queue &queue) {
  pthread_cleanup_push(unlock, &queue.mutex);
  while (queue.head == nullptr) {
    pthread_cond_wait(&queue.cond, &queue.mutex);
  }
  pthread_cleanup_pop(0);
}

// wait_until_done returns when the consumer is done with the element, and with the record. A
// condition may wake without a signal, so `done` decides. The pusher may see it while the consumer
// is still to give its signal, and then waits for `in_use`, which the consumer holds by then. The
// consumer uses record and value until it is done: a request to cancel the pusher waits as well.
void wait_until_done(orba_queue_sync &record) {
  const uncancelled whole;
  while (record.done == 0) {
    pthread_cond_wait(&record.cond, &record.mutex);
  }
  pthread_mutex_unlock(&record.mutex);
  pthread_mutex_lock(&record.in_use);
  pthread_mutex_unlock(&record.in_use);
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
  heap<orba_queue_sync> record;
  if (node == nullptr) {
    return -1;
  }
  if (value != nullptr) {
    record = make_record(value);
    if (record == nullptr) {
      return -1;
    }
  }
  *node = {nullptr, data, record.get()};
  pthread_mutex_lock(&queue->mutex);
  append(*queue, node.get(), node.get(), 1);
  pthread_cond_signal(&queue->cond);
  pthread_mutex_unlock(&queue->mutex);
  if (record == nullptr) {
    static_cast<void>(node.release()); // orba_queue_pop_done frees it
    return 0;
  }
  wait_until_done(*record);
  return 0;
}

void *orba_queue_pop(orba_queue *queue, void **value_out, orba_queue_node **node_out) {
  pthread_mutex_lock(&queue->mutex);
  if (queue->head == nullptr) {
    wait_for_element(*queue);
  }
  orba_queue_node *node = unlink_oldest(*queue);
  pthread_mutex_unlock(&queue->mutex);
  return deliver(node, value_out, node_out);
}

void *orba_queue_pop_without_cond_wait(orba_queue *queue, void **value_out,
                                       orba_queue_node **node_out) {
  pthread_mutex_lock(&queue->mutex);
  orba_queue_node *node = unlink_oldest(*queue);
  pthread_mutex_unlock(&queue->mutex);
  return deliver(node, value_out, node_out);
}

void *orba_queue_trypop(orba_queue *queue, void **value_out, orba_queue_node **node_out) {
  if (pthread_mutex_trylock(&queue->mutex) != 0) {
    return nullptr;
  }
  orba_queue_node *node = unlink_oldest(*queue);
  pthread_mutex_unlock(&queue->mutex);
  return deliver(node, value_out, node_out);
}

void orba_queue_pop_done(orba_queue_node *node) {
  orba_queue_sync *record = node->sync;
  if (record == nullptr) {
    free(node);
    return;
  }
  pthread_mutex_lock(&record->mutex);
  pthread_mutex_lock(&record->in_use); // before `done`: who sees that waits for this one
  record->done = 1;
  pthread_mutex_unlock(&record->mutex);
  pthread_cond_signal(&record->cond);
  pthread_mutex_unlock(&record->in_use); // the pusher frees the record and the node
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
  // A pusher may still hold its record's mutex: that one comes ahead of the queue's.
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
