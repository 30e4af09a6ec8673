// norvane-cli navdb, run as a user runs it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/RunProcess.hpp"

namespace fs = std::filesystem;

namespace {

using CliRun = norvane::test::ShellResult;

CliRun Cli(const std::string& args) {
  return norvane::test::RunShell(norvane::test::ShellQuote(NORVANE_CLI) + " " + args + " 2>&1");
}

const std::string kSample = NORVANE_SAMPLE_DB;

}  // namespace

TEST(NavDBCli, InfoAndFindOnTheSampleDatabase) {
  CliRun info = Cli("navdb info '" + kSample + "'");
  EXPECT_EQ(info.status, 0);
  EXPECT_EQ(info.out.substr(0, info.out.find("airports:")),
            "file: sample.dat\nvalid: yes\ncount: 7229\ncycle: 0001\ndisplay_name: sample (0001)\n");

  struct Row { const char* ident; int status; const char* out; };
  const Row rows[] = {
      {"lam", 0, "LAM  VORN27°22' E053°11' \nLAM  VORN51°39' E000°09' \nLAM  NDBN27°22' E053°12' \n"},
      {"EGL", 1, "message: ..Not found..\n"},
      {"EG-LL", 2, "error: IDENT: expected 1 to 5 letters or digits, got \"EG-LL\"\n"},
  };
  for (const Row& r : rows) {
    const CliRun run = Cli("navdb find '" + kSample + "' '" + r.ident + "'");
    EXPECT_EQ(run.status, r.status) << r.ident;
    EXPECT_EQ(run.out, r.out) << r.ident;
  }
  EXPECT_EQ(Cli("--json navdb find '" + kSample + "' BNN").out,
            "{\"matches\": [\"BNN  VORN21°59' E100°45' \", \"BNN  VORN51°44' W000°33' \", "
            "\"BNN  VORN65°27' E012°13' \"]}\n");
}

TEST(NavDBCli, InvalidFilesAndBadArguments) {
  const fs::path dir = fs::temp_directory_path() / ("norvane-navdb-cli-" + std::to_string(::getpid()));
  fs::create_directories(dir);
  const std::string bad = (dir / "bad.dat").string();
  std::ofstream(bad, std::ios::binary) << std::string(100, 'x');

  CliRun r = Cli("navdb info '" + bad + "'");
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "file: bad.dat\nvalid: no\nmessage: file length 100 is not a multiple of 12\n");
  r = Cli("navdb find '" + bad + "' LAM");
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "message: file length 100 is not a multiple of 12\n");
  r = Cli("navdb info '" + (dir / "none.dat").string() + "'");
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.out.find("message: file not found"), std::string::npos);

  // build: the output name must be usable by the program; inputs must be readable.
  r = Cli("navdb build --out '" + (dir / "x.bin").string() + "' '" + NORVANE_SOURCE_DIR + "/data/waypoints/navaids.csv'");
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.out.find("--out: the file name must end in .dat"), std::string::npos);
  r = Cli("navdb build --cycle 70000 --out '" + (dir / "x.dat").string() + "' '" + NORVANE_SOURCE_DIR +
          "/data/waypoints/navaids.csv'");
  EXPECT_EQ(r.status, 2);
  std::ofstream(dir / "broken.csv") << "ident,latitude_deg,longitude_deg\nAB,\"1\"x,2\n";
  r = Cli("navdb build --out '" + (dir / "x.dat").string() + "' '" + (dir / "broken.csv").string() + "'");
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.out.find("broken.csv: CSV syntax error near line 2"), std::string::npos);
  EXPECT_FALSE(fs::exists(dir / "x.dat"));
  std::ofstream(dir / "empty.csv") << "ident,latitude_deg,longitude_deg\n";
  r = Cli("navdb build --out '" + (dir / "x.dat").string() + "' '" + (dir / "empty.csv").string() + "'");
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "message: no waypoint to write: the inputs hold no usable row\n");

  // A successful build prints one summary line and the file opens.
  r = Cli("navdb build --cycle 2401 --out '" + (dir / "NAV.DAT").string() + "' '" + NORVANE_SOURCE_DIR +
          "/data/waypoints/navaids.csv'");
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out,
            "message: wrote NAV.DAT: 50 waypoints (0 airports, 32 VORs, 18 NDBs, 0 intersections), cycle 2401; "
            "skipped 0 bad identifiers, 0 duplicates, 5 rows of other types, 0 unreadable rows\n");
  r = Cli("navdb info '" + (dir / "NAV.DAT").string() + "'");
  EXPECT_EQ(r.status, 0);
  EXPECT_NE(r.out.find("display_name: NAV (2401)"), std::string::npos);
  fs::remove_all(dir);
}
