#include "kest/ipc.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include "util/uncancelled.h"

namespace {

constexpr uint32_t TYPE_MASK = 0xFF;
constexpr int BACKLOG = 128;

// close_failed closes a socket and keeps `errno`.
void close_failed(int fd) {
  const int reason = errno;
  close(fd);
  errno = reason;
}

bool bind_server(int fd, const sockaddr *addr, socklen_t addrlen, int type) {
  const int32_t on = 1;
  setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  return bind(fd, addr, addrlen) == 0 && (type != SOCK_STREAM || listen(fd, BACKLOG) == 0);
}

// connect_client also accepts a connection in progress.
bool connect_client(int fd, const sockaddr *addr, socklen_t addrlen) {
  return connect(fd, addr, addrlen) == 0 || errno == EINPROGRESS;
}

// usock_open_one opens a socket and binds or connects it. It returns the descriptor, or -1.
int usock_open_one(const sockaddr *addr, socklen_t addrlen, int domain, int type, bool server) {
  const int fd = socket(domain, type, 0);
  if (fd < 0) {
    return -1;
  }
  if (server ? bind_server(fd, addr, addrlen, type) : connect_client(fd, addr, addrlen)) {
    return fd;
  }
  close_failed(fd);
  return -1;
}

// usock_open_path refuses a path that does not fit with its terminator.
int usock_open_path(const char *path, int type, bool server) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  const size_t size = strnlen(path, sizeof address.sun_path);
  if (size == sizeof address.sun_path) {
    errno = EINVAL;
    return -1;
  }
  memcpy(address.sun_path, path, size);
  return usock_open_one(reinterpret_cast<const sockaddr *>(&address), sizeof address, AF_UNIX, type,
                        server);
}

int address_family(uint32_t flags) {
  if ((flags & USOCK_FLAG_IPV6) != 0) {
    return AF_INET6;
  }
  return (flags & USOCK_FLAG_IPV4) != 0 ? AF_INET : AF_UNSPEC;
}

// usock_open_resolved takes the first address that works. It ignores the list's types and
// protocols: the socket has the caller's type.
int usock_open_resolved(uint32_t flags, const char *host, const char *service, int type,
                        bool server) {
  addrinfo hints = {};
  hints.ai_family = address_family(flags);
  hints.ai_flags = AI_ADDRCONFIG | (server ? AI_PASSIVE : 0) |
                   ((flags & USOCK_FLAG_NUMERIC_HOST) != 0 ? AI_NUMERICHOST : 0);
  hints.ai_socktype = type;
  addrinfo *list = nullptr;
  if (getaddrinfo(host, service, &hints, &list) != 0) {
    return -1;
  }
  int fd = -1;
  for (const addrinfo *entry = list; entry != nullptr && fd < 0; entry = entry->ai_next) {
    fd = usock_open_one(entry->ai_addr, entry->ai_addrlen, entry->ai_family, type, server);
  }
  const int reason = errno;
  freeaddrinfo(list);
  errno = reason;
  return fd;
}

void usock_apply_flags(int fd, uint32_t flags) {
  if ((flags & USOCK_FLAG_KEEP_ON_EXEC) == 0) {
    fcntl(fd, F_SETFD, fcntl(fd, F_GETFD) | FD_CLOEXEC);
  }
  if ((flags & USOCK_FLAG_NONBLOCKING) != 0) {
    fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) | O_NONBLOCK);
  }
}

} // namespace

int usock(uint32_t flags, const char *host, const char *service) {
  const uncancelled whole;
  const int type = (flags & TYPE_MASK) != 0 ? SOCK_DGRAM : SOCK_STREAM;
  const bool server = (flags & USOCK_FLAG_SERVER) != 0;
  const int fd = (flags & USOCK_FLAG_LOCAL_PATH) != 0
                     ? usock_open_path(host, type, server)
                     : usock_open_resolved(flags, host, service, type, server);
  if (fd < 0) {
    return -1;
  }
  usock_apply_flags(fd, flags);
  return fd;
}
