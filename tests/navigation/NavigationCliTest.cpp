// norvane-cli magvar, inverse and direct, run as a user runs them: the built binary, its standard
// input, output and exit status.
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "app/Angles.hpp"
#include "navigation/GeoMag.hpp"
#include "navigation/Geodesy.hpp"

using namespace norvane;

namespace {

struct CliRun {
  int status = -1;
  std::string out, err;
};

std::string ReadFile(const std::filesystem::path& p) {
  std::ifstream in(p, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Runs norvane-cli with `args`, feeding `input` on standard input.
CliRun Cli(const std::string& args, const std::string& input = "") {
  static int counter = 0;
  const auto dir = std::filesystem::temp_directory_path() /
                   ("norvane-navcli-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()) +
                    "-" + std::to_string(++counter));
  std::filesystem::create_directories(dir);
  {
    std::ofstream(dir / "in", std::ios::binary) << input;
  }
  const std::string cmd = std::string("'") + NORVANE_CLI + "' " + args + " < '" + (dir / "in").string() + "' > '" +
                          (dir / "out").string() + "' 2> '" + (dir / "err").string() + "'";
  const int raw = std::system(cmd.c_str());
  CliRun r;
  r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  r.out = ReadFile(dir / "out");
  r.err = ReadFile(dir / "err");
  std::filesystem::remove_all(dir);
  return r;
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string l; std::getline(in, l);) lines.push_back(l);
  return lines;
}

// The numbers of one output line ("ND" reads as kUndefined).
std::vector<double> Numbers(const std::string& line) {
  std::vector<double> v;
  std::istringstream in(line);
  for (std::string f; in >> f;) v.push_back(f == "ND" ? kUndefined : std::stod(f));
  return v;
}

}  // namespace

TEST(NavigationCli, MagVarPrintsTheScreenText) {
  struct Row {
    const char* args;
    const char* out;
  } rows[] = {
      // WMM2005 published values at 2006.0: 14.93 at 40 N 120 W, -140.50 at 80 S 120 E.
      {"magvar --at 40,-120 --date 2006-01-01 --model wmm2005", "variation: 14.9E\n"},
      {"magvar --at -80,120 --date 2006-01-01 --model wmm2005", "variation: 140.5W\n"},
      {"magvar --at 0,0 --date 2006-01-01 --model wmm2005", "variation: 6.6W\n"},
      {"--json magvar --at 0,0 --date 2006-01-01 --model wmm2005", "{\"variation\": \"6.6W\"}\n"},
      // WMM2025 at Anchorage at the end of 2025: 14.2E.
      {"magvar --at 61.2,-150 --date 2025-12-31 --model wmm2025", "variation: 14.2E\n"},
      {"magvar --at 51.5,-0.5 --date 2004-06-01 --model igrf10",
       "variation: 2.6W\nnotice: IGRF-10 is valid 2005\u20132010; earlier dates take its 2005.0 field\n"},
  };
  for (const auto& r : rows) {
    const CliRun run = Cli(r.args);
    EXPECT_EQ(run.status, 0) << r.args << run.err;
    EXPECT_EQ(run.out, r.out) << r.args;
  }
  // Defaults: IGRF-10, altitude 0; the altitude is in feet; --raw gives the signed value.
  const CalendarDate date{2008, 3, 1};
  const double lat = 51.5 * kDegToRad, lon = -0.5 * kDegToRad;
  const CliRun igrf = Cli("--raw magvar --at 51.5,-0.5 --date 2008-03-01");
  EXPECT_DOUBLE_EQ(std::stod(igrf.out.substr(11)), ComputeMagVar(lat, lon, 0, date, MagModel::IGRF10));
  const CliRun high = Cli("--raw magvar --at 51.5,-0.5 --date 2008-03-01 --altitude 65000 --model wmm2005");
  EXPECT_DOUBLE_EQ(std::stod(high.out.substr(11)), ComputeMagVar(lat, lon, 65000 * 0.3048 / 1000, date, MagModel::WMM2005));
  // Today's date by default.
  const CliRun today = Cli("magvar --at 45,7");
  EXPECT_EQ(today.status, 0);
  EXPECT_TRUE(today.out.rfind("variation: ", 0) == 0 && (today.out.find("E\n") != std::string::npos ||
                                                         today.out.find("W\n") != std::string::npos))
      << today.out;
}

TEST(NavigationCli, MagVarRejectsBadInputNamingTheOption) {
  struct Row {
    const char* args;
    const char* mention;
  } rows[] = {
      {"magvar --at 95,0", "(-89.9833 to 89.9833 degrees"},  {"magvar --at 10,180", "--at longitude"},
      {"magvar --at 10,20 --altitude 10.5", "not a whole number"},
      {"magvar --at 10", "--at"},                   {"magvar --at 10,20 --altitude -1", "--altitude"},
      {"magvar --at 10,20 --altitude 65001", "--altitude"}, {"magvar --at 10,20 --model wmm2030", "--model"}, {"magvar --at 10,20 --altitude high", "--altitude"},
      {"magvar --at 10,20 --date 2007-13-01", "--date"},    {"magvar --at 10,20 --model wmm2020", "--model"},
      {"magvar", "--at"},
  };
  for (const auto& r : rows) {
    const CliRun run = Cli(r.args);
    EXPECT_EQ(run.status, 2) << r.args;
    EXPECT_EQ(run.out, "") << r.args;
    EXPECT_NE(run.err.find(r.mention), std::string::npos) << r.args << ": " << run.err;
  }
}

TEST(NavigationCli, InverseAnswersEveryLineInOrder) {
  const std::string input =
      "10 0 -10 180\n"         // exact antipodes
      "45 10 45 10\n"          // identical points
      "0 5 10 5\n"             // due north
      "0,0, 10,100\r\n"        // commas, CRLF
      "  -33.9 151.2\t51.5 -0.1  \n"
      "abc\n"                  // not numbers
      "95 0 0 0\n"             // latitude out of range
      "1 2 3\n"                // too few
      "1 2 3 4 5\n"            // too many
      "\n"                     // empty
      "0 0 0.5 179.7\n"        // nearly antipodal
      "0 210 0 -150";          // 0..360 longitudes are reduced: one point; no final newline
  const CliRun sphere = Cli("inverse --method sphere", input);
  EXPECT_EQ(sphere.status, 1);
  EXPECT_NE(sphere.err.find("5 line(s)"), std::string::npos) << sphere.err;
  const auto lines = Lines(sphere.out);
  ASSERT_EQ(lines.size(), 12u) << sphere.out;
  EXPECT_EQ(lines[11], "0 ND ND");
  EXPECT_EQ(lines[0], "10800 ND ND");
  EXPECT_EQ(lines[1], "0 ND ND");
  EXPECT_EQ(lines[2], "600 360 360");
  EXPECT_EQ(lines[5], "error: line 6: expected LAT1 LON1 LAT2 LON2, got \"abc\"");
  EXPECT_EQ(lines[6], "error: line 7: LAT1 95 is out of range (-90 to 90)");
  EXPECT_EQ(lines[7].rfind("error: line 8: ", 0), 0u);
  EXPECT_EQ(lines[8].rfind("error: line 9: ", 0), 0u);
  EXPECT_EQ(lines[9].rfind("error: line 10: ", 0), 0u);
  // Full precision: the printed numbers read back as the model's doubles.
  const double pts[][4] = {{0, 0, 10, 100}, {-33.9, 151.2, 51.5, -0.1}, {0, 0, 0.5, 179.7}};
  const int at[] = {3, 4, 10};
  for (int i = 0; i < 3; ++i) {
    const InverseResult want = GreatCircleSphere(pts[i][0], pts[i][2], pts[i][1], pts[i][3]);
    const auto got = Numbers(lines[at[i]]);
    ASSERT_EQ(got.size(), 3u) << lines[at[i]];
    EXPECT_EQ(got[0], want.distance);
    EXPECT_EQ(got[1], want.trackIni);
    EXPECT_EQ(got[2], want.trackFin);
  }

  const auto wgs = Lines(Cli("inverse", input).out);
  ASSERT_EQ(wgs.size(), 12u);
  ASSERT_EQ(Numbers(wgs[2]).size(), 3u);
  EXPECT_EQ(Numbers(wgs[2])[1], 0);  // the ellipsoid reports north as 0
  EXPECT_EQ(wgs[10], "ND ND ND");    // Vincenty does not converge
  const InverseResult want = GeodesicWGS84(-33.9, 51.5, 151.2, -0.1);
  EXPECT_EQ(Numbers(wgs[4]), (std::vector<double>{want.distance, want.trackIni, want.trackFin}));

  // The rhumb line's single track fills both columns; it goes the long way off a parallel.
  const auto rl = Lines(Cli("inverse --method rhumb", "40 170 45 -170\n40 170 40 -170\n").out);
  ASSERT_EQ(rl.size(), 2u);
  const auto longWay = Numbers(rl[0]);
  EXPECT_NEAR(longWay[0], 15031, 0.5);
  EXPECT_NEAR(longWay[1], 271.14, 0.01);
  EXPECT_EQ(longWay[1], longWay[2]);
  EXPECT_EQ(Numbers(rl[1])[1], 90);
}

TEST(NavigationCli, DirectAnswersEveryLine) {
  const std::string input =
      "0 0 90 5400\n"
      "0 -179 270 120\n"   // wraps to the eastern hemisphere
      "10 20 360 600\n"    // 360 is north
      "0 0 90 -1\n"        // negative distance
      "0 0 361 10\n"       // track out of range
      "0, 0, 45, 100\n";
  const CliRun sphere = Cli("direct --method sphere", input);
  EXPECT_EQ(sphere.status, 1);
  const auto lines = Lines(sphere.out);
  ASSERT_EQ(lines.size(), 6u) << sphere.out;
  EXPECT_NEAR(Numbers(lines[0])[1], 90, 1e-12);
  EXPECT_NEAR(Numbers(lines[1])[1], 179, 1e-12);
  EXPECT_EQ(Numbers(lines[2]), (std::vector<double>{20, 20}));
  EXPECT_EQ(lines[3], "error: line 4: DIST_NM -1 is out of range (0 to 21600)");
  EXPECT_EQ(lines[4], "error: line 5: TRACK 361 is out of range (0 to 360)");
  const GeoPoint p = DirectSphere(0, 0, 45, 100);
  EXPECT_EQ(Numbers(lines[5]), (std::vector<double>{p.lat, p.lon}));

  const CliRun wgs = Cli("direct", "51.5 -0.1 45 3000\n");
  EXPECT_EQ(wgs.status, 0);
  const GeoPoint q = DirectWGS84(51.5, -0.1, 45, 3000);
  EXPECT_EQ(Numbers(wgs.out), (std::vector<double>{q.lat, q.lon}));
}

TEST(NavigationCli, BatchStreamsLargeInputAndLongLines) {
  // Enough lines to cross many read and write blocks, with a line too long for the reader in
  // the middle: every input line still gets exactly one answer, in order.
  std::string input;
  const int n = 200000;
  for (int i = 0; i < n; ++i) {
    if (i == n / 2) input += std::string(10000, '1') + "\n";
    input += std::to_string(i % 90) + " " + std::to_string(i % 180) + " -" + std::to_string(i % 89) + " 1.5\n";
  }
  const CliRun run = Cli("inverse --method sphere", input);
  EXPECT_EQ(run.status, 1);
  const auto lines = Lines(run.out);
  ASSERT_EQ(lines.size(), static_cast<size_t>(n + 1));
  EXPECT_EQ(lines[n / 2], "error: line " + std::to_string(n / 2 + 1) + ": line longer than 4096 characters");
  for (int i : {0, 1, n / 2 - 1, n / 2 + 1, n - 1}) {
    const int k = i > n / 2 ? i - 1 : i;
    const InverseResult want = GreatCircleSphere(k % 90, -(k % 89), k % 180, 1.5);
    EXPECT_EQ(Numbers(lines[i]), (std::vector<double>{want.distance, want.trackIni, want.trackFin})) << i;
  }
}
