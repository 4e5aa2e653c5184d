// tests/support/temporary_folder.h: a folder of a test's own, gone with it.
#pragma once
#include <cstdlib>
#include <filesystem>
#include <string>

struct temporary_folder {
  std::string path = "/tmp/kest_XXXXXX";

  temporary_folder() {
    mkdtemp(path.data());
  }
  ~temporary_folder() {
    std::filesystem::remove_all(path);
  }
  temporary_folder(const temporary_folder &) = delete;
  temporary_folder &operator=(const temporary_folder &) = delete;
};
