#include "kest/ipc.h"

#include <memory>
#include <thread>

#include "bench/job.h"

namespace {

int element = 0; // what is pushed; its address is all that counts

struct local_queue {
  local_queue() {
    orba_queue_init(&queue);
  }
  orba_queue queue;
};

void pop_one(orba_queue &queue) {
  void *value = nullptr;
  orba_queue_node *node = nullptr;
  orba_queue_pop(&queue, &value, &node);
  orba_queue_pop_done(node);
}

// A queue, and a thread that takes its elements until it gets a null one.
struct consumed_queue : local_queue {
  consumed_queue() : consumer([this] { consume(); }) {}
  ~consumed_queue() {
    orba_queue_push(&queue, nullptr, nullptr);
    consumer.join();
  }

  void consume() {
    for (bool more = true; more;) {
      void *value = nullptr;
      orba_queue_node *node = nullptr;
      more = orba_queue_pop(&queue, &value, &node) != nullptr;
      orba_queue_pop_done(node);
    }
  }

  std::thread consumer;
};

// push_to_consumer pushes `count` elements to another thread. The last push waits until the
// consumer is done with it, and so with all of them.
std::function<void()> push_to_consumer(size_t count) {
  return [to = std::shared_ptr<consumed_queue>(), count]() mutable {
    if (to == nullptr) { // no thread before it is needed
      to = std::make_shared<consumed_queue>();
    }
    for (size_t i = 1; i < count; ++i) {
      orba_queue_push(&to->queue, &element, nullptr);
    }
    orba_queue_push(&to->queue, &element, &element);
  };
}

std::function<void()> push_then_pop(size_t count) {
  return [of = std::make_shared<local_queue>(), count] {
    for (size_t i = 0; i < count; ++i) {
      orba_queue_push(&of->queue, &element, nullptr);
    }
    for (size_t i = 0; i < count; ++i) {
      pop_one(of->queue);
    }
  };
}

// A move takes no look at the elements, however many there are.
std::function<void()> move_elements(size_t count) {
  return [from = std::make_shared<local_queue>(), to = std::make_shared<local_queue>(),
          count]() mutable {
    for (size_t i = orba_queue_length(&from->queue); i < count; ++i) {
      orba_queue_push(&from->queue, &element, nullptr);
    }
    orba_queue_push_queue(&to->queue, &from->queue);
    std::swap(from, to);
  };
}

std::function<void()> push_then_flush(size_t count) {
  return [of = std::make_shared<local_queue>(), count] {
    for (size_t i = 0; i < count; ++i) {
      orba_queue_push(&of->queue, malloc(1), nullptr);
    }
    orba_queue_flush_without_cond_wait(&of->queue);
  };
}

} // namespace

void measure_ipc(measured &out) {
  constexpr size_t BATCH = 1000;
  constexpr size_t MILLION = 1'000'000;
  out.jobs.push_back({"queue, push and pop on one thread", push_then_pop(1)});
  out.jobs.push_back({"queue, push to another thread", push_to_consumer(BATCH), BATCH});
  out.jobs.push_back({"queue, synchronous push", push_to_consumer(1)});
  out.curves.push_back(
      {"queue, push all and pop all", "elements", doubled(MILLION), push_then_pop});
  out.curves.push_back(
      {"queue, push all and flush", "elements", doubled(MILLION), push_then_flush});
  out.curves.push_back({"queue, move all", "elements", doubled(MILLION), move_elements});
}
