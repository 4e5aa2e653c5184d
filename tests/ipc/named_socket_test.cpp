#include "kest/ipc.h"

#include "kest/log.h"
#include "tests/ipc/sockets.h"

namespace {

// create_addr shows the address as well: its family, how many octets of it are 0, and its path.
json create_addr(const json &row) {
  const json call = with_types(row);
  sockaddr_un address = {};
  const std::span octets(reinterpret_cast<const uint8_t *>(&address), sizeof address);
  memset(&address, FRESH, sizeof address);
  const int fd = create_socket_addr(argument<const char *>(call[1]), &address,
                                    argument<int>(call[2]), argument<mode_t>(call[3]), 1, 2);
  return {opened(fd), address.sun_family, std::count(octets.begin(), octets.end(), 0),
          fd < 0 ? "" : address.sun_path};
}

// write_six gives the result and what has come out.
json write_six(int32_t n) {
  int ends[2];
  EXPECT_EQ(pipe(ends), 0);
  const int32_t result = writen(ends[1], "abcdef", n);
  char text[8] = "";
  close(ends[1]);
  EXPECT_GE(read(ends[0], text, sizeof text), 0);
  close(ends[0]);
  return {result, text};
}

TEST(NamedSocket, StepsMessagesAndResults) {
  log_priority = 7;
  run_socket_rows("ipc/named_socket", {{"connect_socket_server", opened_by(connect_socket_server)},
                                       {"create_socket", opened_by(create_socket)},
                                       {"create_socket_addr", create_addr},
                                       {"writen", call_of(write_six)},
                                       {"listen", [](const json &) {
                                          return json(listen(last_opened(), 1));
                                        }}});
  log_priority = 6;
}

} // namespace
