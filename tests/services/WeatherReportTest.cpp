// Station files as the weather server keeps them, and what the screen makes of them.
#include <gtest/gtest.h>

#include "services/WeatherReport.hpp"

namespace norvane {
namespace {

TEST(WeatherReport, StationFileAddress) {
  EXPECT_EQ(WeatherUrl("https://tgftp.nws.noaa.gov/data", "LFPG", WeatherKind::Metar),
            "https://tgftp.nws.noaa.gov/data/observations/metar/stations/LFPG.TXT");
  EXPECT_EQ(WeatherUrl("http://127.0.0.1:8080/mirror", "KJFK", WeatherKind::Taf),
            "http://127.0.0.1:8080/mirror/forecasts/taf/stations/KJFK.TXT");
}

TEST(WeatherReport, IcaoCodes) {
  for (const char* code : {"EGLL", "KJFK"}) EXPECT_TRUE(IsIcaoCode(code)) << code;
  for (const char* code : {"EGL", "EGLLX", "egll", "EG1L", "", "EG L"}) EXPECT_FALSE(IsIcaoCode(code)) << code;
}

TEST(WeatherReport, ReadsStationFilesOfTheCurrentYear) {
  struct Row {
    const char* file;
    int year;
    int code;
    const char* recorded;
    const char* report;
  };
  const Row rows[] = {
      // METAR: one report line.
      {"2025/03/14 09:50\nEGLL 140950Z 24012KT 9999 FEW030 12/06 Q1018 NOSIG\n", 2025, 0, "2025/03/14 09:50",
       "EGLL 140950Z 24012KT 9999 FEW030 12/06 Q1018 NOSIG"},
      // TAF: continuation lines lose their outer blanks and keep their own lines.
      {"2025/03/14 11:02\nTAF EGLL 141058Z 1412/1518 24012KT 9999 SCT030 \n      TEMPO 1412/1418 BKN014\n",
       2025, 0, "2025/03/14 11:02", "TAF EGLL 141058Z 1412/1518 24012KT 9999 SCT030\nTEMPO 1412/1418 BKN014"},
      // CR LF line ends.
      {"2025/01/02 00:20\r\nLFPG 020020Z 00000KT CAVOK 02/01 Q1030\r\n", 2025, 0, "2025/01/02 00:20",
       "LFPG 020020Z 00000KT CAVOK 02/01 Q1030"},
      // No final line feed; only the time line.
      {"2025/06/01 12:00\nKJFK 011200Z", 2025, 0, "2025/06/01 12:00", "KJFK 011200Z"},
      {"2025/06/01 12:00", 2025, 0, "2025/06/01 12:00", ""},
      // Last year's file is refused on purpose, also on the first days of a new year.
      {"2024/12/31 23:50\nEGLL 312350Z 24012KT CAVOK 08/04 Q1021\n", 2025, 5, "", ""},
      // An error page of the server does not start with the year.
      {"<html><body>404 Not Found</body></html>", 2025, 5, "", ""},
      {"202", 2025, 5, "", ""},
      // Control characters of a hostile server become U+FFFD (a tab a space); Latin-1 letters are
      // read as Latin-1 when the reply is not UTF-8, UTF-8 stays UTF-8.
      {"2025/03/14 09:50\x1b]0;pwned\x07\nEGLL\t140950Z \x1b[2J\x9b" "31m\rQ1018\x7f\n", 2025, 0,
       "2025/03/14 09:50\uFFFD]0;pwned\uFFFD", "EGLL 140950Z \uFFFD[2J\uFFFD31m\uFFFDQ1018\uFFFD"},
      {"2025/03/14 09:50\nM\xfcnchen \xb0" "C\n", 2025, 0, "2025/03/14 09:50", "M\u00fcnchen \u00b0C"},
      {"2025/03/14 09:50\nM\u00fcnchen \u00b0C\n", 2025, 0, "2025/03/14 09:50", "M\u00fcnchen \u00b0C"},
      {"2025/03/14 09:50\n\xc0\xaf \xed\xa0\x80\n", 2025, 0, "2025/03/14 09:50", "\u00c0\u00af \u00ed\u00a0\uFFFD"},
  };
  for (const Row& r : rows) {
    const WeatherResult w = ParseWeatherReply(r.file, r.year);
    EXPECT_EQ(w.code, r.code) << r.file;
    EXPECT_EQ(w.recorded, r.recorded) << r.file;
    EXPECT_EQ(w.report, r.report) << r.file;
  }
}

TEST(WeatherReport, Texts) {
  const std::pair<int, const char*> rows[] = {
      {1, "No Internet connection"}, {3, "Invalid URL"}, {4, "Read data error"},
      {5, "Unable to get weather data\r\n(unknown location or no available weather data)"}};
  for (const auto& [code, text] : rows) EXPECT_EQ(WeatherErrorText(code), text) << code;
  WeatherResult ok;
  ok.recorded = "2025/03/14 09:50";
  EXPECT_EQ(RecordedText(ok), "Recorded: 2025/03/14 09:50");
}

}  // namespace
}  // namespace norvane
