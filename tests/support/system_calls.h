// tests/support/system_calls.h: what the library asks of the system. The tests are linked in such a
// way that the calls below, by the library and the tests, come by here on their way.
#pragma once
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <pthread.h>

// While it lives, calls of sockets, files and the system log are written down, without descriptors,
// as "socket 1 stream 0" or "bind /tmp/s 110". The system log gets none of its own. A call that
// works leaves EIO in `errno`.
struct system_calls {
  std::vector<std::string> lines;
  std::map<std::string, std::string> failing; // these fail: EACCES, EINPROGRESS or EMFILE
  std::deque<std::pair<int, int>> writing;    // writes take so many octets at most, with this errno

  system_calls();
  ~system_calls();
  system_calls(const system_calls &) = delete;
  system_calls &operator=(const system_calls &) = delete;
};

// Called before each pthread_cond_signal, if set.
extern std::function<void(pthread_cond_t *)> before_signal;

// How many descriptors the process has open.
size_t open_descriptors();
