#pragma once
// Tests of permissions (a read-only folder, an unreadable file) mean nothing to root, who passes
// every permission check, and CI runs as root. Such a test starts with
//     if (!norvane::test::RunsUnprivileged()) return;
// Run by root, the current test runs again in a copy of the test program as the user "nobody"
// (setpriv, util-linux) and its outcome becomes this test's; run by anyone else, the test goes on.

#include <unistd.h>

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "RunProcess.hpp"

namespace norvane::test {

inline bool RunsUnprivileged() {
  if (::geteuid() != 0) return true;
  namespace fs = std::filesystem;
  const ::testing::TestInfo* t = ::testing::UnitTest::GetInstance()->current_test_info();
  // The build tree may be closed to other users: the copy lives in a folder that nobody may enter.
  const fs::path dir = fs::temp_directory_path() / ("norvane-unprivileged-" + std::to_string(::getpid()));
  fs::create_directories(dir);
  fs::permissions(dir, fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec | fs::perms::others_read |
                           fs::perms::others_exec);
  const fs::path copy = dir / "test";
  fs::copy_file(fs::read_symlink("/proc/self/exe"), copy, fs::copy_options::overwrite_existing);
  const ProcessResult r =
      RunProcess("setpriv", {"--reuid=nobody", "--regid=nogroup", "--clear-groups", copy.string(),
                             std::string("--gtest_filter=") + t->test_suite_name() + "." + t->name()});
  fs::remove_all(dir);
  EXPECT_EQ(r.status, 0) << r.out << r.err;
  EXPECT_NE(r.out.find("[  PASSED  ] 1 test"), std::string::npos) << r.out << r.err;
  return false;
}

}  // namespace norvane::test
