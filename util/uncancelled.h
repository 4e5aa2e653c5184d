// util/uncancelled.h: code in which a thread cannot be cancelled.
#pragma once

// kest_put_off_cancellation puts off requests to cancel the calling thread (pthread_cancel). It
// returns the state for kest_restore_cancellation.
int kest_put_off_cancellation();
void kest_restore_cancellation(int state);

// uncancelled does so while it lives. A cancelled thread runs no destructor here: it would keep
// locks, leak descriptors or leave work half done.
class uncancelled {
public:
  uncancelled() : state_(kest_put_off_cancellation()) {}
  ~uncancelled() {
    kest_restore_cancellation(state_);
  }
  uncancelled(const uncancelled &) = delete;
  uncancelled &operator=(const uncancelled &) = delete;

private:
  const int state_;
};
