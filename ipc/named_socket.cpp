#include "kest/ipc.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include <sys/socket.h>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include "kest/log.h"
#include "util/uncancelled.h"

namespace {

// set_path writes "/" and the name, cut to what an address holds.
void set_path(sockaddr_un &address, const char *name) {
  snprintf(address.sun_path, sizeof address.sun_path, "/%s", name);
}

const sockaddr *generic(const sockaddr_un &address) {
  return reinterpret_cast<const sockaddr *>(&address);
}

const char *error_text() {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): the text of an error that the system gives is a constant
  return strerror(errno);
}

// bind_new removes an old file at the path, then binds.
bool bind_new(const char *log_name, const char *name, int fd, const sockaddr_un &address) {
  if (unlink(address.sun_path) < 0 && errno != ENOENT) {
    log_message(LOG_ERR, "%s: Failed to unlink old socket '%s': %s\n", log_name, name,
                error_text());
    return false;
  }
  if (bind(fd, generic(address), sizeof address) < 0) {
    log_message(LOG_ERR, "%s: Failed to bind socket '%s': %s\n", log_name, name, error_text());
    unlink(address.sun_path);
    return false;
  }
  return true;
}

int create(const char *log_name, const char *name, sockaddr_un *addr_out, int type, mode_t mode,
           uid_t owner, gid_t group) {
  const uncancelled whole;
  const int fd = socket(AF_UNIX, type, 0);
  if (fd < 0) {
    log_message(LOG_ERR, "%s: Failed to open socket '%s': %s\n", log_name, name, error_text());
    return -1;
  }
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  set_path(address, name);
  if (!bind_new(log_name, name, fd, address)) {
    close(fd);
    return -1;
  }
  // The mode comes last: a change of owner clears set-id bits. Both failures are ignored.
  [[maybe_unused]] const int owned = chown(address.sun_path, owner, group);
  chmod(address.sun_path, mode);
  if (addr_out != nullptr) {
    *addr_out = address;
  }
  log_message(LOG_INFO, "%s: Created socket '%s' with mode '%o', user '%d', group '%d'\n", log_name,
              address.sun_path, mode, static_cast<int>(owner), static_cast<int>(group));
  return fd;
}

} // namespace

int32_t writen(int fd, const void *buf, int32_t n) {
  const uncancelled whole; // a cancelled `write` does not say what it has written
  const auto *rest = static_cast<const char *>(buf);
  int32_t left = n;
  while (left > 0) {
    errno = 0; // a result of 0 sets none
    const ssize_t written = write(fd, rest, static_cast<size_t>(left));
    if (written > 0) {
      rest += written;
      left -= static_cast<int32_t>(written);
    } else if (errno != EINTR) {
      return -1;
    }
  }
  return n;
}

int connect_socket_server(const char *name, int type) {
  const uncancelled whole;
  constexpr char LOG_NAME[] = "connect_socket_server";
  log_message(LOG_DEBUG, "%s: connect to Server %s\n", LOG_NAME, name);
  sockaddr_un address;
  set_path(address, name);
  const int readable = access(address.sun_path, R_OK);
  if (readable < 0) {
    log_message(LOG_INFO, "%s: %s %d %d", LOG_NAME, name, readable, errno);
    return -1;
  }
  const int fd = socket(AF_UNIX, type, 0);
  if (fd < 0) {
    log_message(LOG_INFO, "%s: UNIX domain socket create failed (errno=%d)\n", LOG_NAME, errno);
    return -1;
  }
  address.sun_family = AF_UNIX;
  // The path counts without its terminator.
  const size_t size = offsetof(sockaddr_un, sun_path) + strlen(address.sun_path);
  if (connect(fd, generic(address), static_cast<socklen_t>(size)) < 0) {
    log_message(LOG_INFO, "%s: Connect fail\n", LOG_NAME);
    close(fd);
    return -1;
  }
  log_message(LOG_INFO, "%s: Connect OK to Server %s OK\n", LOG_NAME, name);
  return fd;
}

int create_socket(const char *name, int type, mode_t mode, uid_t owner, gid_t group) {
  return create("create_socket", name, nullptr, type, mode, owner, group);
}

int create_socket_addr(const char *name, struct sockaddr_un *addr_out, int type, mode_t mode,
                       uid_t owner, gid_t group) {
  return create("create_socket_addr", name, addr_out, type, mode, owner, group);
}
