// norvane-cli navdb, run as a user runs it: the rows of data/navdb-cli.txt.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/Golden.hpp"
#include "support/RunProcess.hpp"
#include "support/TempDir.hpp"

namespace fs = std::filesystem;
using namespace norvane::test;

TEST(NavDBCli, CommandsAndErrors) {
  const TempDir temp;
  std::ofstream(temp.path / "bad.dat", std::ios::binary) << std::string(100, 'x');
  const std::pair<std::string, std::string> names[] = {{"$SAMPLE", NORVANE_SAMPLE_DB},
                                                       {"$NAVAIDS", NORVANE_SOURCE_DIR "/data/waypoints/navaids.csv"},
                                                       {"$INPUTS", NORVANE_SOURCE_DIR "/tests/waypoints/data/builder"},
                                                       {"$DIR", temp.path.string()}};
  const auto expand = [&](std::string s, bool quote) {
    for (const auto& [name, value] : names)
      for (size_t i; (i = s.find(name)) != std::string::npos;)
        s.replace(i, name.size(), quote ? ShellQuote(value) : value);
    return s;
  };
  for (const auto& r : ReadGolden("waypoints/data/navdb-cli.txt", "cli")) {
    const auto run = RunCliLine(expand(r[1], true));
    const std::string want = expand(r[2], false);
    EXPECT_EQ(run.status, std::stoi(r[0])) << r.where;
    EXPECT_EQ(run.out.substr(0, want.size()), want) << r.where;
  }
  EXPECT_FALSE(fs::exists(temp.path / "x.dat"));  // no build that failed left a file
}
