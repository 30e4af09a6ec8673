// norvane-cli magvar, inverse and direct, run as a user runs them: one row per command and mode,
// one per kind of error; the batch commands' line handling.
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/Angles.hpp"
#include "navigation/GeoMag.hpp"
#include "navigation/Geodesy.hpp"
#include "support/RunProcess.hpp"

using namespace norvane;

namespace {

using test::RunCli;

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

// The published values, the notices and the errors of magvar are rows of cli/data/commands.txt.
TEST(NavigationCli, MagVarDefaultsAltitudeAndRawValue) {
  // Defaults: IGRF-10, altitude 0; the altitude is in feet; --raw gives the signed value.
  const CalendarDate date{2008, 3, 1};
  const double lat = 51.5 * kDegToRad, lon = -0.5 * kDegToRad;
  EXPECT_DOUBLE_EQ(std::stod(RunCli({"--raw", "magvar", "--at", "51.5,-0.5", "--date", "2008-03-01"}).out.substr(11)),
                   ComputeMagVar(lat, lon, 0, date, MagModel::IGRF10));
  const auto high = RunCli(
      {"--raw", "magvar", "--at", "51.5,-0.5", "--date", "2008-03-01", "--altitude", "65000", "--model", "wmm2005"});
  EXPECT_DOUBLE_EQ(std::stod(high.out.substr(11)),
                   ComputeMagVar(lat, lon, 65000 * 0.3048 / 1000, date, MagModel::WMM2005));
  EXPECT_EQ(RunCli({"magvar", "--at", "45,7"}).status, 0);  // today by default
}

TEST(NavigationCli, BatchesAnswerEveryLineInOrderAtFullPrecision) {
  const std::string input =
      "0,0, 10,100\r\n"  // commas, CRLF
      "  -33.9 151.2\t51.5 -0.1  \n"
      "abc\n"
      "95 0 0 0\n"
      "0 0 0.5 179.7\n"  // nearly antipodal
      "0 210 0 -150";    // 0..360 longitudes are reduced: one point; no final newline
  const auto sphere = RunCli({"inverse", "--method", "sphere"}, input);
  EXPECT_EQ(sphere.status, 1);
  EXPECT_NE(sphere.err.find("2 line(s)"), std::string::npos) << sphere.err;
  const auto lines = Lines(sphere.out);
  ASSERT_EQ(lines.size(), 6u) << sphere.out;
  EXPECT_EQ(lines[2], "error: line 3: expected LAT1 LON1 LAT2 LON2, got \"abc\"");
  EXPECT_EQ(lines[3], "error: line 4: LAT1 95 is out of range (-90 to 90)");
  const double pts[][4] = {{0, 0, 10, 100}, {-33.9, 151.2, 51.5, -0.1}};
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(lines[5], "0 ND ND");
    const InverseResult want = GreatCircleSphere(pts[i][0], pts[i][1], pts[i][2], pts[i][3]);
    EXPECT_EQ(Numbers(lines[size_t(i)]), (std::vector<double>{want.distance, want.trackIni, want.trackFin}));
  }
  const auto wgs = Lines(RunCli({"inverse"}, input).out);
  ASSERT_EQ(wgs.size(), 6u);
  const InverseResult want = GeodesicWGS84(-33.9, 151.2, 51.5, -0.1);
  EXPECT_EQ(Numbers(wgs[1]), (std::vector<double>{want.distance, want.trackIni, want.trackFin}));
  EXPECT_EQ(wgs[4], "ND ND ND");  // Vincenty does not converge
  const auto rl = Numbers(RunCli({"inverse", "--method", "rhumb"}, "40 170 45 -170\n").out);
  ASSERT_EQ(rl.size(), 3u);
  EXPECT_EQ(rl[0], RhumbLine(40, 170, 45, -170).distance);
  EXPECT_EQ(rl[1], rl[2]);  // the single track fills both columns

  const auto direct = RunCli({"direct", "--method", "sphere"}, "0 0 90 -1\n0, 0, 45, 100\n");
  const auto dl = Lines(direct.out);
  ASSERT_EQ(dl.size(), 2u) << direct.out;
  EXPECT_EQ(dl[0], "error: line 1: DIST_NM -1 is out of range (0 to 21600)");
  const GeoPoint p = DirectSphere(0, 0, 45, 100);
  EXPECT_EQ(Numbers(dl[1]), (std::vector<double>{p.lat, p.lon}));
  const GeoPoint q = DirectWGS84(51.5, -0.1, 45, 3000);
  EXPECT_EQ(Numbers(RunCli({"direct"}, "51.5 -0.1 45 3000\n").out), (std::vector<double>{q.lat, q.lon}));
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
  const auto lines = Lines(RunCli({"inverse", "--method", "sphere"}, input).out);
  ASSERT_EQ(lines.size(), static_cast<size_t>(n + 1));
  EXPECT_EQ(lines[n / 2], "error: line " + std::to_string(n / 2 + 1) + ": line longer than 4096 characters");
  for (int i : {0, n / 2 + 1, n}) {
    const int k = i > n / 2 ? i - 1 : i;
    const InverseResult want = GreatCircleSphere(k % 90, k % 180, -(k % 89), 1.5);
    EXPECT_EQ(Numbers(lines[size_t(i)]), (std::vector<double>{want.distance, want.trackIni, want.trackFin})) << i;
  }
}
