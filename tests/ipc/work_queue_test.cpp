#include "kest/ipc.h"

#include <atomic>
#include <thread>

#include <unistd.h>

#include "tests/support/rows.h"

namespace {

char letters[] = "abcdefgh"; // elements are pointers to these

struct queue : orba_queue {
  queue() {
    EXPECT_EQ(orba_queue_init(this), 0);
  }
};

std::map<std::string, queue> queues; // of a row

constexpr decltype(&orba_queue_pop) POPS[] = {orba_queue_pop, orba_queue_pop_without_cond_wait,
                                              orba_queue_trypop};

// pop_and_end takes an element, ends it, and shows its letter, or "nothing" with outputs untouched.
template <size_t way>
json pop_and_end(orba_queue *from) {
  void *value = letters;
  orba_queue_node *node = nullptr;
  const auto *data = static_cast<char *>(POPS[way](from, &value, &node));
  if (node == nullptr) {
    return data == nullptr && value == letters ? "nothing" : "changed";
  }
  EXPECT_EQ(value, nullptr) << "nobody waits";
  orba_queue_pop_done(node);
  return data == nullptr ? json() : json(std::string(1, *data));
}

} // namespace

template <>
orba_queue *argument(const json &name) {
  return &queues[name];
}

template <>
const orba_queue *argument(const json &name) {
  return &queues[name];
}

template <>
void *argument(const json &letter) {
  return letter.is_null() ? nullptr : &letters[letter.get<std::string>()[0] - 'a'];
}

namespace {

TEST(WorkQueue, OneThread) {
  run_rows(
      "ipc/work_queue",
      {KEST_CALL(orba_queue_push),
       {"pop", call_of(pop_and_end<0>)},
       {"pop_without_cond_wait", call_of(pop_and_end<1>)},
       {"trypop", call_of(pop_and_end<2>)},
       KEST_CALL(orba_queue_length),
       KEST_CALL(orba_queue_push_queue),
       {"lock", call_of(+[](orba_queue *of) { return pthread_mutex_trylock(&of->mutex) == 0; })},
       {"unlock", call_of(+[](orba_queue *of) { return pthread_mutex_unlock(&of->mutex); })}},
      [] { queues.clear(); });
}

void wait_for_length(const orba_queue &of, uint32_t length) {
  while (orba_queue_length(&of) != length) {
    usleep(1000);
  }
  usleep(5000); // for a thread that is on its way to its wait
}

TEST(WorkQueue, PushesAndMovesWakeAConsumer) {
  queue q, source;
  std::thread consumer([&] {
    EXPECT_EQ(pop_and_end<0>(&q), "a");
    EXPECT_EQ(pop_and_end<0>(&q), "b");
  });
  wait_for_length(q, 0);
  orba_queue_push_queue(&q, &source); // nothing moves: back to waiting
  wait_for_length(q, 0);
  orba_queue_push(&q, &letters[0], nullptr);
  wait_for_length(q, 0);
  orba_queue_push(&source, &letters[1], nullptr);
  orba_queue_push_queue(&q, &source);
  consumer.join();
}

TEST(WorkQueue, FlushFreesAndReleases) {
  queue q;
  std::vector<std::thread> pushers;
  for (const size_t size : {0u, 1u, 1u, 1u}) { // of the data, none for 0
    orba_queue_push(&q, size == 0 ? nullptr : malloc(size), nullptr);
    pushers.emplace_back(orba_queue_push, &q, size == 0 ? nullptr : malloc(size), malloc(1));
  }
  wait_for_length(q, 8);
  orba_queue_flush_without_cond_wait(&q);
  for (std::thread &pusher : pushers) {
    pusher.join();
  }
  EXPECT_EQ(orba_queue_length(&q), 0u);
  orba_queue_flush_without_cond_wait(&q);
  orba_queue_push(&q, &letters[1], nullptr);
  EXPECT_EQ(pop_and_end<0>(&q), "b");
}

// One element of the stress: every fourth is pushed with a value, and handled when that returns.
struct job {
  size_t producer;
  int number;
  bool handled = false;

  void *value() { // also one of which only the highest bit is set
    // NOLINTNEXTLINE(performance-no-int-to-ptr): nobody reads through it
    return number % 8 == 7   ? reinterpret_cast<void *>(~(UINTPTR_MAX >> 1))
           : number % 4 == 3 ? this
                             : nullptr;
  }
};

constexpr size_t THREADS = 3; // that produce, and that consume

void produce(orba_queue &to, std::vector<job> &jobs) {
  for (job &j : jobs) {
    ASSERT_EQ(orba_queue_push(&to, &j, j.value()), 0);
    ASSERT_TRUE(j.value() == nullptr || j.handled);
  }
}

// consume takes jobs, in one of the three ways, until it gets null.
void consume(orba_queue &from, size_t way) {
  int last[THREADS] = {-1, -1, -1};
  for (;;) {
    void *value = nullptr;
    orba_queue_node *node = nullptr;
    auto *j = static_cast<job *>(POPS[way](&from, &value, &node));
    if (node == nullptr) {
      std::this_thread::yield();
      continue;
    }
    if (j == nullptr) {
      return orba_queue_pop_done(node);
    }
    EXPECT_LT(std::exchange(last[j->producer], j->number), j->number) << "first in, first out";
    EXPECT_EQ(value, j->value());
    if (value != nullptr) {
      pthread_cond_broadcast(&node->sync->cond); // a spurious wake-up of the pusher
      std::this_thread::yield();
    }
    j->handled = true;
    orba_queue_pop_done(node);
  }
}

// Each signal comes late, after a wake-up without one: a pusher that takes that for the end frees
// what the consumer still has in its hands.
TEST(WorkQueue, ProducersMovesAndConsumersAtOnce) {
  queue in, out;
  std::vector<std::thread> producers, consumers;
  std::vector<job> jobs[THREADS];
  std::atomic<size_t> producing{THREADS};
  before_signal = [](pthread_cond_t *cond) {
    pthread_cond_broadcast(cond);
    std::this_thread::yield();
    *reinterpret_cast<const volatile char *>(cond); // which a sanitizer sees, if it is gone
  };
  for (size_t i = 0; i < THREADS; ++i) {
    for (int number = 0; number < 2000; ++number) {
      jobs[i].push_back({i, number});
    }
    consumers.emplace_back(consume, std::ref(out), i);
    producers.emplace_back([&, i] {
      produce(i == 0 ? out : in, jobs[i]);
      --producing;
    });
  }
  while (producing > 0) {
    orba_queue_push_queue(&out, &in);
    std::this_thread::yield();
  }
  for (std::thread &producer : producers) {
    producer.join();
    orba_queue_push(&in, nullptr, nullptr); // an end for each consumer
  }
  orba_queue_push_queue(&out, &in);
  for (std::thread &consumer : consumers) {
    consumer.join();
  }
  before_signal = nullptr;
  for (const auto &own : jobs) {
    EXPECT_TRUE(std::all_of(own.begin(), own.end(), [](const job &j) { return j.handled; }));
  }
}

} // namespace
