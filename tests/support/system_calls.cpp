#include "tests/support/system_calls.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <sstream>

#include <dirent.h>
#include <netdb.h>
#include <sys/socket.h>
#include <sys/un.h>

std::function<void(pthread_cond_t *)> before_signal;

namespace {

system_calls *watch = nullptr; // tests with threads have none

const std::map<std::string, int> ERRORS = {
    {"EACCES", EACCES}, {"EINPROGRESS", EINPROGRESS}, {"EMFILE", EMFILE}};

// fails records a call and returns whether it must fail.
template <class... argument>
bool fails(const char *name, const argument &...arguments) {
  if (watch == nullptr) {
    return false;
  }
  std::ostringstream line;
  line << name;
  ((line << " " << arguments), ...);
  watch->lines.push_back(line.str());
  const auto found = watch->failing.find(name);
  const bool failing = found != watch->failing.end();
  errno = failing ? ERRORS.at(found->second) : EIO;
  return failing || strcmp(name, "openlog") == 0 || strcmp(name, "vsyslog") == 0;
}

std::string shown(const sockaddr *address, socklen_t size) {
  const auto *local = reinterpret_cast<const sockaddr_un *>(address);
  const std::string path = address->sa_family == AF_UNIX
                               ? std::string(local->sun_path, strnlen(local->sun_path, size - 2))
                               : "internet";
  return path + " " + std::to_string(size);
}

const char *shown(const char *text) {
  return text == nullptr ? "(null)" : text;
}

const char *shown_type(int type) { // its number differs between processors
  return type == SOCK_STREAM ? "stream" : type == SOCK_DGRAM ? "datagram" : "other";
}

std::string formatted(const char *format, va_list arguments) {
  char text[512];
  va_list copy;
  va_copy(copy, arguments);
  vsnprintf(text, sizeof text, format, copy);
  va_end(copy);
  return text;
}

// A test machine may have no address but the loopback.
const addrinfo *without_addrconfig(const addrinfo *hints) {
  static addrinfo changed;
  changed = *hints;
  changed.ai_flags &= ~AI_ADDRCONFIG;
  return &changed;
}

} // namespace

system_calls::system_calls() {
  watch = this;
}

system_calls::~system_calls() {
  watch = nullptr;
}

size_t open_descriptors() {
  const auto all = std::filesystem::directory_iterator("/proc/self/fd");
  return static_cast<size_t>(std::distance(begin(all), end(all)));
}

// A call with what is written down of it; it goes on to the system, or gives `failure`.
#define KEST_WATCH(result, failure, name, parameters, arguments, ...)                              \
  extern "C" result __real_##name parameters;                                                      \
  extern "C" result __wrap_##name parameters;                                                      \
  result __wrap_##name parameters {                                                                \
    return fails(#name __VA_OPT__(, ) __VA_ARGS__) ? failure : __real_##name arguments;            \
  }

KEST_WATCH(int, -1, socket, (int domain, int type, int protocol), (domain, type, protocol), domain,
           shown_type(type), protocol)
KEST_WATCH(int, -1, bind, (int fd, const sockaddr *address, socklen_t size), (fd, address, size),
           shown(address, size))
KEST_WATCH(int, -1, connect, (int fd, const sockaddr *address, socklen_t size), (fd, address, size),
           shown(address, size))
KEST_WATCH(int, -1, listen, (int fd, int backlog), (fd, backlog), backlog)
KEST_WATCH(int, -1, setsockopt, (int fd, int level, int option, const void *value, socklen_t size),
           (fd, level, option, value, size), level == SOL_SOCKET, option == SO_REUSEADDR,
           *static_cast<const int *>(value), size)
KEST_WATCH(int, -1, close, (int fd), (fd))
KEST_WATCH(int, -1, access, (const char *path, int mode), (path, mode), path, mode)
KEST_WATCH(int, -1, unlink, (const char *path), (path), path)
KEST_WATCH(int, -1, chown, (const char *path, uid_t owner, gid_t group), (path, owner, group), path,
           owner, group)
KEST_WATCH(int, -1, chmod, (const char *path, mode_t mode), (path, mode), path, mode)
KEST_WATCH(DIR *, nullptr, opendir, (const char *path), (path), path)
KEST_WATCH(int, -1, getaddrinfo,
           (const char *host, const char *service, const addrinfo *hints, addrinfo **list),
           (host, service, without_addrconfig(hints), list), shown(host), hints->ai_family,
           shown_type(hints->ai_socktype), hints->ai_flags, hints->ai_protocol)
KEST_WATCH(void, void(), freeaddrinfo, (addrinfo * list), (list))
KEST_WATCH(void, void(), openlog, (const char *ident, int options, int facility),
           (ident, options, facility), shown(ident), options, facility)
KEST_WATCH(void, void(), closelog, (), ())
KEST_WATCH(void, void(), vsyslog, (int priority, const char *format, va_list arguments),
           (priority, format, arguments), priority, formatted(format, arguments))

extern "C" {

// What an optimized build of the library calls (_FORTIFY_SOURCE).
void __wrap___vsyslog_chk(int priority, int flag, const char *format, va_list arguments);
void __wrap___vsyslog_chk(int priority, int, const char *format, va_list arguments) {
  __wrap_vsyslog(priority, format, arguments);
}

ssize_t __real_write(int fd, const void *data, size_t size);
ssize_t __wrap_write(int fd, const void *data, size_t size);
int __real_pthread_cond_signal(pthread_cond_t *cond);
int __wrap_pthread_cond_signal(pthread_cond_t *cond);

ssize_t __wrap_write(int fd, const void *data, size_t size) {
  if (watch == nullptr || watch->writing.empty()) {
    return __real_write(fd, data, size);
  }
  const auto [limit, error] = watch->writing.front();
  watch->writing.pop_front();
  if (error != 0) { // else what stands there stays
    errno = error;
  }
  return limit <= 0 ? limit : __real_write(fd, data, std::min(size, static_cast<size_t>(limit)));
}

int __wrap_pthread_cond_signal(pthread_cond_t *cond) {
  if (before_signal != nullptr) {
    before_signal(cond);
  }
  return __real_pthread_cond_signal(cond);
}
}
