#include "kest/util.h"

#include <csignal>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/system_calls.h"

namespace {

TEST(Process, IsFoundByTheNameItWasStartedUnder) {
  const std::string own = std::to_string(getpid());
  const std::string marker = "kest" + own;
  const std::string past = marker + "past"; // ends after the 511 octets that are read
  std::string name = "start " + own + " ";
  name += std::string(511 - name.size() - marker.size(), '.') + past;
  std::string seconds = "61." + own;
  char *const arguments[] = {name.data(), seconds.data(), nullptr};
  pid_t child = -1;
  ASSERT_EQ(posix_spawn(&child, "/bin/sleep", nullptr, nullptr, arguments, nullptr), 0);
  const size_t before = open_descriptors();
  for (int i = 0; i < 5000 && kest_get_pid_by_name(marker.c_str()) != child; ++i) {
    usleep(1000); // its command line is there a moment later
  }
  EXPECT_EQ(kest_get_pid_by_name(marker.c_str()), child);
  EXPECT_EQ(kest_get_pid_by_name(("start " + own + " .").c_str()), child);
  EXPECT_EQ(kest_get_pid_by_name(past.c_str()), -2);
  EXPECT_EQ(kest_get_pid_by_name(seconds.c_str()), -2) << "an argument is no name";
  {
    const int32_t first = kest_get_pid_by_name("");
    std::string line;
    std::getline(std::ifstream("/proc/" + std::to_string(first) + "/cmdline"), line);
    EXPECT_NE(line, "");
  }
  kill(child, SIGKILL);
  siginfo_t info;
  waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT);
  EXPECT_EQ(kest_get_pid_by_name(marker.c_str()), -2) << "an ended process has no command line";
  waitpid(child, nullptr, 0);
  system_calls calls;
  calls.failing = {{"opendir", "EMFILE"}};
  EXPECT_EQ(kest_get_pid_by_name(marker.c_str()), -1);
  EXPECT_EQ(open_descriptors(), before);
}

} // namespace
