// Station files as the weather server keeps them, and what the screen makes of them.
#include <gtest/gtest.h>

#include "weather/WeatherReport.hpp"

#include "support/Golden.hpp"

namespace norvane {
namespace {

// The rows of data/weather.txt.
TEST(WeatherReport, GoldenTable) {
  for (const auto& r : test::ReadGolden("weather/data/weather.txt", "url"))
    EXPECT_EQ(WeatherUrl(r[0], r[1], r[2] == "TAF" ? WeatherKind::Taf : WeatherKind::Metar), r[3]) << r.where;
  for (const auto& r : test::ReadGolden("weather/data/weather.txt", "icao"))
    EXPECT_EQ(IsIcaoCode(r[0]), r[1] == "yes") << r.where;
  for (const auto& r : test::ReadGolden("weather/data/weather.txt", "reply")) {
    const WeatherResult w = ParseWeatherReply(r[2], std::stoi(r[0]));
    EXPECT_EQ(w.code, std::stoi(r[1])) << r.where;
    EXPECT_EQ(w.recorded, r[3]) << r.where;
    EXPECT_EQ(w.report, r[4]) << r.where;
  }
  for (const auto& r : test::ReadGolden("weather/data/weather.txt", "error"))
    EXPECT_EQ(WeatherErrorText(std::stoi(r[0])), r[1]) << r.where;
  WeatherResult ok;
  ok.recorded = "2025/03/14 09:50";
  EXPECT_EQ(RecordedText(ok), "Recorded: 2025/03/14 09:50");
}

}  // namespace
}  // namespace norvane
