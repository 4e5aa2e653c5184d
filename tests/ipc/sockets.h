// tests/ipc/sockets.h: rows that open sockets.
#pragma once
#include <cerrno>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/rows.h"

inline std::vector<int> descriptors; // that the library opened in a row

inline int last_opened() {
  return descriptors.back();
}

inline json opened(int fd) {
  if (fd < 0) {
    return fd;
  }
  descriptors.push_back(fd);
  return "open";
}

// with_types gives a call with the types of sockets, which stand in rows as a text: their numbers
// differ between processors.
inline json with_types(json call) {
  for (json &value : call) {
    value = value == "stream" ? json(SOCK_STREAM) : value == "datagram" ? json(SOCK_DGRAM) : value;
  }
  return call;
}

// opened_by is the call of a function that gives a descriptor.
template <class... arguments>
auto opened_by(int (*function)(arguments...)) {
  return [call = call_of(function)](const json &row) {
    return opened(call(with_types(row)));
  };
}

// run_socket_rows looks for descriptors that stay open, and closes those that the rows opened.
inline void run_socket_rows(const std::string &table, row_calls functions) {
  functions["mkdir"] = call_of(mkdir);
  functions["access"] = call_of(access);
  functions["close"] = [](const json &) {
    const int fd = last_opened();
    descriptors.pop_back();
    return json(close(fd));
  };
  close(0); // so that 0 comes back as a descriptor like any other
  const size_t before = open_descriptors();
  run_rows(table, functions, [before] {
    EXPECT_EQ(open_descriptors(), before + descriptors.size()) << "descriptors stay open";
    for (const int fd : descriptors) {
      close(fd);
    }
    descriptors.clear();
  });
}
