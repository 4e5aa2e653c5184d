// tests/support/printed.h: what a call prints.
#pragma once
#include <string>

#include <gtest/gtest.h>

template <class call>
std::string printed(const call &run) {
  testing::internal::CaptureStdout();
  run();
  return testing::internal::GetCapturedStdout();
}
