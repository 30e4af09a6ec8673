// METAR and TAF decoding: the hand-written table of report shapes (data/metar_cases.txt), the
// splitting of station files into reports, and norvane-cli metar-decode as scripts use it.
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <string>

#include "support/RunProcess.hpp"
#include "weather/MetarDecoder.hpp"
#include "weather/MetarText.hpp"

namespace norvane {
namespace {

TEST(MetarDecoder, TableOfReportShapes) {
  std::ifstream in(NORVANE_METAR_CASES);
  ASSERT_TRUE(in) << NORVANE_METAR_CASES;
  int cases = 0;
  std::string report, expected, line;
  auto check = [&] {
    if (report.empty()) return;
    ++cases;
    std::string got;
    for (const DecodedLine& l : DescribeReport(DecodeReport(report))) got += l.key + ": " + l.text + "\n";
    EXPECT_EQ(got, expected) << report;
    report.clear();
    expected.clear();
  };
  while (std::getline(in, line)) {
    if (line.starts_with("#")) continue;
    if (line.empty())
      check();
    else if (line.starts_with("> "))
      report += (report.empty() ? "" : "\n") + line.substr(2);
    else
      expected += line + "\n";
  }
  check();
  EXPECT_GE(cases, 60);
}

TEST(MetarDecoder, SplitsStationFilesAndLaysOutChangeGroups) {
  const auto reports = SplitReports(
      "2025/03/14 11:02\nTAF EGLL 141058Z 1412/1518 24010KT 9999 BKN035\n      TEMPO 1412/1416 7000 RA\n"
      "PROB30 TEMPO 1500/1506 BR\r\nEGLL 141150Z 24010KT CAVOK 12/08 Q1013 NOSIG=\nBECMG 1500\n\nRMK lost\n");
  ASSERT_EQ(reports.size(), 4u);
  EXPECT_EQ(reports[0],
            "TAF EGLL 141058Z 1412/1518 24010KT 9999 BKN035\n      TEMPO 1412/1416 7000 RA\n"
            "PROB30 TEMPO 1500/1506 BR");
  EXPECT_EQ(reports[2], "BECMG 1500");  // the METAR before it was closed by "="
  // A TAF run together on one line gets one change group per line; a METAR trend stays.
  EXPECT_EQ(ReportLines("TAF EGLL 141058Z 1412/1518 24010KT 9999 BKN035 TEMPO 1412/1416 7000 RA BECMG "
                        "1418/1421 30015KT PROB30 TEMPO 1500/1506 BR FM150600 VRB03KT CAVOK RMK NXT FCST BY 18Z"),
            "TAF EGLL 141058Z 1412/1518 24010KT 9999 BKN035\nTEMPO 1412/1416 7000 RA\nBECMG 1418/1421 30015KT\n"
            "PROB30 TEMPO 1500/1506 BR\nFM150600 VRB03KT CAVOK\nRMK NXT FCST BY 18Z");
}

TEST(MetarDecoder, CommandLine) {
  // One JSON object per METAR and line: MPS converted to knots, statute miles to metres, inHg to hPa.
  auto r = test::RunCliLine("metar-decode --json",
                            "UUEE 151200Z 27005G10MPS 1 1/2SM -SHRA BR VV/// M05/M07 A2992 XX\n"
                            "METAR LFPG 020030Z VRB02KT CAVOK M00/M01 Q1030\n");
  EXPECT_EQ(r.status, 0);
  const std::string uuee =
      R"("station":"UUEE","time":"151200","nil":false,"wind_direction":270,"wind_speed_kt":10,"gust_kt":19,)"
      R"("visibility_m":2414.016,"weather":["-SHRA","BR"],"clouds":[{"cover":"VV","height_ft":null,"type":null}],)"
      R"("temperature_c":-5,"dew_point_c":-7,"relative_humidity":85.8,"qnh_hpa":1013.2,)";
  EXPECT_NE(r.out.find(uuee), std::string::npos) << r.out;
  EXPECT_NE(r.out.find(R"("undecoded":["XX"]})"
                       "\n{"),
            std::string::npos)
      << r.out;
  EXPECT_NE(r.out.find(R"("wind_direction":"VRB","wind_speed_kt":2,"gust_kt":null,"visibility_m":10000,)"
                       R"("weather":[],"clouds":[],"temperature_c":0,)"),
            std::string::npos)
      << r.out;

  // The density altitude of a METAR is the density altitude screen's for the same values.
  r = test::RunCliLine("metar-decode --elevation 5434", "KDEN 211753Z 16008KT 10SM CLR 28/05 A3012\n");
  const auto da = test::RunCliLine("density-altitude --qnh 1020 --temperature 28 --dewpoint 5 --elevation 5434");
  std::smatch m;
  ASSERT_TRUE(std::regex_search(da.out, m, std::regex("density_altitude: (\\d)(\\d+)"))) << da.out;
  EXPECT_NE(
      r.out.find("density_altitude: Density altitude " + m[1].str() + "," + m[2].str() + " ft at elevation 5,434 ft"),
      std::string::npos)
      << r.out << da.out;

  // An empty input and a bad option are rows of cli/data/commands.txt.
  EXPECT_EQ(test::RunCliLine("metar-decode", "\n2025/03/14 09:50\n").out, "message: No report on standard input\n");
}

}  // namespace
}  // namespace norvane
