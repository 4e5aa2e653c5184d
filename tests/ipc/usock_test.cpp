#include "kest/ipc.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include "tests/ipc/sockets.h"

namespace {

// open_or_tell gives the name of `errno` for a failure; of one to resolve nothing is promised.
json open_or_tell(const json &call) {
  const json result = opened_by(usock)(call);
  return result == -1 ? json(strerrorname_np(errno)) : result;
}

// flags_of_last shows FD_CLOEXEC, O_NONBLOCK, and whether the mode that was set before stays.
json flags_of_last(const json &) {
  const int flags = fcntl(last_opened(), F_GETFL);
  return {(fcntl(last_opened(), F_GETFD) & FD_CLOEXEC) != 0, (flags & O_NONBLOCK) != 0,
          (flags & O_ACCMODE) == O_RDWR};
}

TEST(Usock, StepsAndFlags) {
  run_socket_rows("ipc/usock", {{"usock", open_or_tell},
                                {"usock that resolves nothing", opened_by(usock)},
                                {"flags", flags_of_last}});
}

std::string port_of(int server) {
  sockaddr_in6 address = {}; // the port stands at the same place in both families
  socklen_t size = sizeof address;
  getsockname(server, reinterpret_cast<sockaddr *>(&address), &size);
  return std::to_string(ntohs(address.sin6_port));
}

// Each server gets what a client of its own sends, in the end through the second address too: no
// host at all means the loopback of both families, of which one refuses.
TEST(Usock, RealPeers) {
  const temporary_folder folder;
  const std::string path = folder.path + "/" + std::string(107 - folder.path.size() - 1, 'x');
  system_calls calls; // for its getaddrinfo
  size_t refused = 0;
  close(0); // so that 0 comes back as a descriptor like any other
  for (const auto &[flags, host, any] :
       std::initializer_list<std::tuple<uint32_t, const char *, bool>>{
           {USOCK_FLAG_IPV4, "127.0.0.1", false},
           {USOCK_FLAG_IPV4 | USOCK_FLAG_DATAGRAM, "127.0.0.1", false},
           {USOCK_FLAG_IPV6, "::1", false},
           {USOCK_FLAG_IPV6 | USOCK_FLAG_DATAGRAM, "::1", false},
           {USOCK_FLAG_IPV4, "127.0.0.1", true},
           {USOCK_FLAG_IPV6, "::1", true},
           {USOCK_FLAG_LOCAL_PATH, path.c_str(), false},
           {USOCK_FLAG_LOCAL_PATH | USOCK_FLAG_DATAGRAM, path.c_str(), false}}) {
    SCOPED_TRACE(testing::Message() << std::hex << flags << " " << host);
    const size_t before = open_descriptors();
    const int server = usock(flags | USOCK_FLAG_SERVER, host, "0");
    calls.lines.clear();
    const int client = usock(any ? 0 : flags, any ? nullptr : host, port_of(server).c_str());
    refused += static_cast<size_t>(std::count(calls.lines.begin(), calls.lines.end(), "close"));
    ASSERT_GE(client, 0) << strerrorname_np(errno);
    EXPECT_EQ(writen(client, "abc", 3), 3);
    const bool datagram = (flags & USOCK_FLAG_DATAGRAM) != 0;
    const int peer = datagram ? dup(server) : accept(server, nullptr, nullptr);
    char text[8] = "";
    EXPECT_EQ(read(peer, text, sizeof text), 3);
    EXPECT_STREQ(text, "abc");
    for (const int fd : {peer, client, server}) {
      close(fd);
    }
    EXPECT_EQ(open_descriptors(), before);
    unlink(path.c_str());
  }
  EXPECT_EQ(refused, 1u);
}

} // namespace
