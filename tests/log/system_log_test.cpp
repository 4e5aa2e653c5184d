// Both front ends of the system log.
#include "kest/log.h"

#include <cerrno>
#include <thread>

#include <sched.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <syslog.h>
#include <unistd.h>

#include "tests/support/rows.h"

namespace {

json level_is(const json &call) {
  int32_t level = 99;
  const int32_t result = log_type_level_is(argument<uint32_t>(call[1]), &level);
  return {result, level};
}

TEST(SystemLog, SwitchesDecideAndShow) {
  run_rows("log/system_log",
           {{"log_priority", variable_of(log_priority)},
            {"verbose", variable_of(verbose)},
            {"_log_types", variable_of(_log_types)},
            {"_log_fmts", variable_of(_log_fmts)},
            {"level of type 0", variable_of(log_type_str_and_level[0].level)},
            {"level of type 9", variable_of(log_type_str_and_level[9].level)},
            KEST_CALL(logging_init),
            KEST_CALL(logging_close),
            {"log_message",
             [](const json &call) {
               return log_message(call[1], "%s %d%%", "a", 100000), json();
             }},
            KEST_CALL(init_tulp_syslog),
            KEST_CALL(exit_tulp_syslog),
            {"_tulp_pr", call_of(+[](uint32_t type, int32_t level) {
               _tulp_pr(type, level, "%s-%d", "x", 5);
             })},
            KEST_CALL(log_type_is_set),
            KEST_CALL(log_type_set),
            KEST_CALL(log_type_clr),
            KEST_CALL(log_type_toggle),
            KEST_CALL(log_fmt_is_set),
            KEST_CALL(log_fmt_set),
            KEST_CALL(log_fmt_clr),
            KEST_CALL(log_fmt_toggle),
            {"log_type_level_is", level_is},
            KEST_CALL(log_type_level_set),
            KEST_CALL(get_log_fmt_status_str),
            KEST_CALL(get_log_type_status_str)},
           [] { // as at load, which the first row sees
             log_priority = LOG_INFO;
             verbose = 0;
             _log_types = (1u << KEST_LOG_TYPES) - 1;
             _log_fmts = (1u << KEST_LOG_FORMATS) - 1;
             for (log_type_row &row : log_type_str_and_level) {
               row.level = LOG_INFO;
             }
           });
}

TEST(SystemLog, LongNamesEndWithTheBuffer) {
  const char *name = std::exchange(log_type_str_and_level[1].name, nullptr);
  for (size_t size = 380; size < 1100; ++size) {
    const std::string longer(size, 'n');
    log_type_str_and_level[1].name = longer.c_str();
    const size_t whole = 14 * 45 - 16 + size;
    EXPECT_EQ(strlen(get_log_type_status_str()), std::min<size_t>(whole, 1023)) << size;
  }
  log_type_str_and_level[1].name = name;
}

TEST(SystemLog, EchoAndLogNameTheSameReason) {
  const std::string format = "%s: %m"; // which strict C++ does not know, but the log does
  std::vector<std::string> asked;
  verbose = 1;
  const std::string echo = printed([&] {
    system_calls calls; // which change errno
    errno = ENOTTY;
    log_message(LOG_ERR, format.c_str(), "a");
    asked = calls.lines;
  });
  verbose = 0;
  EXPECT_EQ(echo, std::string("a: ") + strerror(ENOTTY));
  EXPECT_EQ(asked, std::vector<std::string>{"vsyslog 3 " + echo});
}

constexpr int LOGGERS = 8, LOGGER_LINES = 100;

// log_from_threads has threads log all at once, every other one through the typed front.
void log_from_threads() {
  std::vector<std::thread> threads;
  threads.reserve(LOGGERS);
  for (int thread = 0; thread < LOGGERS; ++thread) {
    threads.emplace_back([thread] {
      for (int line = thread * LOGGER_LINES; line < (thread + 1) * LOGGER_LINES; ++line) {
        if (thread % 2 == 0) {
          log_message(LOG_ERR, "load %d", line);
        } else {
          _tulp_pr(0, LOG_ERR, "load %d", line);
        }
      }
    });
  }
  for (std::thread &thread : threads) {
    thread.join();
  }
}

// The C library's own connection, in a process whose root directory has a /dev/log of the test's.
TEST(SystemLog, ReachesASocket) {
  const temporary_folder root;
  std::filesystem::create_directory(root.path + "/dev");
  sockaddr_un address = {AF_UNIX, ""};
  strcpy(address.sun_path, (root.path + "/dev/log").c_str());
  const int log = socket(AF_UNIX, SOCK_DGRAM, 0);
  ASSERT_EQ(bind(log, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
  const pid_t child = fork();
  if (child == 0) {
    const char *path = root.path.c_str();
    if (chroot(path) != 0 && (unshare(CLONE_NEWUSER) != 0 || chroot(path) != 0)) {
      _exit(1);
    }
    logging_init("kestd");
    log_message(LOG_ERR, "plain %d", 1);
    init_tulp_syslog();
    _tulp_pr(3, LOG_WARNING, "typed %d", 2);
    log_from_threads();
    _exit(0);
  }
  std::string received;
  int status = -1;
  for (bool running = true; running;) {
    running = waitpid(child, &status, WNOHANG) == 0;
    char line[512];
    for (ssize_t size; (size = recv(log, line, sizeof line, MSG_DONTWAIT)) > 0;) {
      received += std::string(line, static_cast<size_t>(size)) + "|";
    }
  }
  close(log);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(received.starts_with("<27>")) << "daemon, error: " << received;
  EXPECT_NE(received.find(" kestd[" + std::to_string(child) + "]: plain 1|"), std::string::npos);
  const size_t typed = received.find("|<132>"); // local 0, warning
  EXPECT_NE(received.find(": typed 2|", typed), std::string::npos) << received;
  for (int i = 0; i < LOGGERS * LOGGER_LINES; ++i) {
    EXPECT_NE(received.find(": load " + std::to_string(i) + "|"), std::string::npos) << i;
  }
}

} // namespace
