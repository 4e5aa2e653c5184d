#include "log/debug_log.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <thread>

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/debug_log.h"
#include "tests/support/octets.h"
#include "tests/support/printed.h"
#include "tests/support/system_calls.h"

namespace {

TEST(DebugLog, RecordIsExactToTheByte) {
  const debug_log log;
  tzset();
  setenv("TZ", "XXX-05:30", 1); // a zone that changes while the process runs
  const time_t before = time(nullptr);
  kest_log(KEST_LOG_ERROR, "a%s\n", "b");
  const time_t after = time(nullptr);
  unsetenv("TZ");
  std::vector<std::string> possible;
  for (time_t t = before; t <= after; ++t) {
    const time_t local = t + 19800;
    char record[128];
    const size_t size = strftime(record, sizeof record, "%Y/%m/%d %H:%M:%S, pid:", gmtime(&local));
    snprintf(record + size, sizeof record - size, "%5d, ab\n", getpid());
    std::transform(record, record + strlen(record), record, [](char c) { return char(~c); });
    possible.push_back(std::string(record) + "\n"); // complemented, but for its end
  }
  EXPECT_NE(std::find(possible.begin(), possible.end(), log.raw()), possible.end());
}

std::string console(uint32_t mask, const std::string &text) {
  return printed([&] { kest_log(mask, "%s", text.c_str()); });
}

TEST(DebugLog, MaskAndSwitchDecide) {
  const debug_log log;
  EXPECT_EQ(console(0, "x"), "");
  orba_kest_log(0);
  EXPECT_EQ(console(KEST_LOG_CONSOLE | KEST_LOG_ERROR, "x"), "");
  EXPECT_EQ(log.raw(), "");
  orba_kest_log(-256);
  EXPECT_EQ(console(KEST_LOG_CONSOLE, "100%d"), "100%d") << "bare, and nothing added to it";
  EXPECT_EQ(console(0x80000000, "any bit"), "");
  EXPECT_EQ(log.lines(), (log_lines{"100%d", "any bit"}));
  LOG_FILE[0] = '\0';
  EXPECT_EQ(console(KEST_LOG_CONSOLE, "x"), "x") << "without a file the text is still printed";
}

TEST(DebugLog, TextEndsWhereToldTo) {
  const debug_log log;
  EXPECT_EQ(console(KEST_LOG_CONSOLE, std::string(3000, 'x')), std::string(2047, 'x'));
  kest_log(1, "ab\xFF%s\n", "cd");
  kest_log(1, "ef%cgh\n", 0);
  EXPECT_EQ(log.lines(), (log_lines{std::string(2047, 'x'), "ab", "ef"}));
}

TEST(DebugLog, RotatesAFileThatHasPassedTheLimit) {
  const std::pair<uint32_t, size_t> cases[] = {{100, 100}, {100, 101}, {0, 1}, {0, 0}};
  for (const auto &[limit, size] : cases) {
    SCOPED_TRACE(testing::Message() << size << " octets, limit " << limit);
    const debug_log log(KEST_LOG_ERROR, limit);
    const std::string old(size, '#');
    log.write(old);
    kest_log(1, "new\n");
    EXPECT_EQ(log.raw(".1"), size > limit ? old : "");
    EXPECT_TRUE(log.raw().starts_with(size > limit ? "" : old));
  }
}

TEST(DebugLog, PathThatCannotBeOpenedLosesTheLineAlone) {
  const debug_log log(KEST_LOG_ERROR, 0);
  // A path of many slashes names the same file: 253 characters are taken, 254 are not.
  const auto padded = [&](size_t size) {
    return log.folder() + std::string(size - log.folder().size() - 3, '/') + "log";
  };
  for (const std::string &bad : {std::string("/nonexistent/log"), padded(254), padded(400)}) {
    strcpy(LOG_FILE, bad.c_str());
    kest_log(1, "lost\n");
  }
  EXPECT_EQ(log.raw(), "");
  strcpy(LOG_FILE, padded(253).c_str());
  for (const char *text : {"1\n", "2\n", "3\n"}) {
    kest_log(1, "%s", text); // with a limit of 0 each one rotates the one before
  }
  EXPECT_EQ(log.lines(), log_lines{"3"});
  EXPECT_EQ(log.lines(".1"), log_lines{"2"});
}

// Another process's record could come between two writes.
TEST(DebugLog, ARecordIsOneWrite) {
  const debug_log log;
  const std::string longest(2047, 'x');
  system_calls calls;
  calls.writing = {{4096, 0}, {-1, EIO}};
  kest_log(1, "%s", longest.c_str());
  EXPECT_EQ(calls.writing.size(), 1u);
  EXPECT_EQ(log.lines(), log_lines{longest});
}

TEST(DebugLog, ThreadsLoseAndMixNothing) {
  const debug_log log;
  std::vector<std::thread> threads;
  log_lines expected;
  for (char name = 'a'; name < 'a' + 8; ++name) {
    const std::string text(100, name);
    expected.insert(expected.end(), 200, text);
    threads.emplace_back([text] {
      for (int i = 0; i < 200; ++i) {
        kest_log(1, "%s\n", text.c_str());
      }
    });
  }
  for (std::thread &thread : threads) {
    thread.join();
  }
  log_lines lines = log.lines();
  std::sort(lines.begin(), lines.end());
  EXPECT_EQ(lines, expected);
}

// A refusal is an error: it is silent with that bit off, whatever else is on.
TEST(DebugLog, EachLevelHasItsBit) {
  const std::pair<uint32_t, log_lines> cases[] = {{0, {}},
                                                  {UINT32_MAX, {"refused", "read"}},
                                                  {KEST_LOG_ERROR, {"refused"}},
                                                  {UINT32_MAX - KEST_LOG_ERROR, {"read"}},
                                                  {UINT32_MAX - KEST_LOG_DEBUG, {"refused"}}};
  for (const auto &[level, lines] : cases) {
    const debug_log log(level);
    kest_log_error("%s\n", "refused");
    kest_log_debug("%s\n", "read");
    EXPECT_EQ(log.lines(), lines) << level;
  }
}

TEST(DebugLog, CompanionsConsultNoSwitch) {
  char text[8] = "-------";
  kest_format_log_msg(nullptr, 8, "x");
  kest_format_log_msg(text, 0, "x");
  kest_format_log_msg(text, -1, "x");
  EXPECT_STREQ(text, "-------");
  kest_format_log_msg(text, 4, "%s", "abcdef");
  EXPECT_EQ(std::string(text, 8), std::string("abc\0---\0", 8));
  kest_format_log_msg(text, 1, "x");
  EXPECT_EQ(text[0], '\0');
  testing::internal::CaptureStderr();
  kest_print_log_msg("50%");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "50%\n");
}

} // namespace
