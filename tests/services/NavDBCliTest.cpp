// norvane-cli navdb, run as a user runs it: one row per command and mode, one per kind of error.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/RunProcess.hpp"
#include "support/TempDir.hpp"

namespace fs = std::filesystem;

TEST(NavDBCli, CommandsAndErrors) {
  const norvane::test::TempDir temp;
  const fs::path& dir = temp.path;
  const auto q = [&](const std::string& name) { return norvane::test::ShellQuote((dir / name).string()); };
  std::ofstream(dir / "bad.dat", std::ios::binary) << std::string(100, 'x');
  std::ofstream(dir / "broken.csv") << "ident,latitude_deg,longitude_deg\nAB,\"1\"x,2\n";
  std::ofstream(dir / "empty.csv") << "ident,latitude_deg,longitude_deg\n";
  const std::string sample = "'" NORVANE_SAMPLE_DB "'", navaids = "'" NORVANE_SOURCE_DIR "/data/waypoints/navaids.csv'";
  struct Row {
    std::string args;
    int status;
    std::string out;  // the start of what it prints
  };
  const Row rows[] = {
      {"navdb info " + sample, 0, "file: sample.dat\nvalid: yes\ncount: 7229\ncycle: 0001\ndisplay_name: sample (0001)\n"},
      {"navdb find " + sample + " lam", 0,
       "LAM  VORN27\u00b022' E053\u00b011' \nLAM  VORN51\u00b039' E000\u00b009' \nLAM  NDBN27\u00b022' E053\u00b012' \n"},
      {"--json navdb find " + sample + " EGLL", 0, "{\"matches\": [\"EGLL  APTN51\u00b028' W000\u00b028' \"]}\n"},
      {"navdb find " + sample + " EGL", 1, "message: ..Not found..\n"},
      {"navdb find " + sample + " EG-LL", 2, "error: IDENT: expected 1 to 5 letters or digits, got \"EG-LL\"\n"},
      {"navdb info " + q("bad.dat"), 1, "file: bad.dat\nvalid: no\nmessage: file length 100 is not a multiple of 12\n"},
      {"navdb find " + q("bad.dat") + " LAM", 1, "message: file length 100 is not a multiple of 12\n"},
      {"navdb build --out " + q("x.bin") + " " + navaids, 2, "error: --out: the file name must end in .dat"},
      {"navdb build --cycle 70000 --out " + q("x.dat") + " " + navaids, 2, "error: --cycle"},
      {"navdb build --out " + q("x.dat") + " " + q("broken.csv"), 2,
       "error: " + (dir / "broken.csv").string() + ": CSV syntax error near line 2"},
      {"navdb build --out " + q("x.dat") + " " + q("empty.csv"), 1,
       "message: no waypoint to write: the inputs hold no usable row\n"},
      {"navdb build --cycle 2401 --out " + q("NAV.DAT") + " " + navaids, 0,
       "message: wrote NAV.DAT: 50 waypoints"},
      {"navdb info " + q("NAV.DAT"), 0, "file: NAV.DAT\nvalid: yes\ncount: 50\ncycle: 2401\n"},
  };
  for (const Row& r : rows) {
    const auto run = norvane::test::RunShell(norvane::test::ShellQuote(NORVANE_CLI) + " " + r.args + " 2>&1");
    EXPECT_EQ(run.status, r.status) << r.args;
    EXPECT_EQ(run.out.substr(0, r.out.size()), r.out) << r.args;
  }
  EXPECT_FALSE(fs::exists(dir / "x.dat"));  // no build that failed left a file
}
