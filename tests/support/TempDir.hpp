#pragma once
// A scratch folder for one test, named after it and the process, removed afterwards.
#include <filesystem>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>

namespace norvane::test {

struct TempDir {
  std::filesystem::path path;
  TempDir() {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    path = std::filesystem::temp_directory_path() /
           ("norvane-" + std::to_string(::getpid()) + "-" + (info ? info->name() : "scratch"));
    std::filesystem::remove_all(path);
    std::filesystem::create_directories(path);
  }
  ~TempDir() {
    std::error_code ec;  // a test may have left a folder without write permission
    std::filesystem::permissions(path, std::filesystem::perms::owner_all, ec);
    std::filesystem::remove_all(path, ec);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
};

}  // namespace norvane::test
