// util/uncancelled.h: a stretch of code in which no thread ends.
#pragma once

// kest_put_off_cancellation has requests to cancel the calling thread (pthread_cancel) wait, and
// returns the state to give to kest_restore_cancellation.
int kest_put_off_cancellation();
void kest_restore_cancellation(int state);

// uncancelled does so while it lives. A cancelled thread runs no destructor here: it would keep a
// lock, leak a descriptor, or leave its work half done.
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
