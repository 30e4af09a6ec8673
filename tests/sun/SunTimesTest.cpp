#include "sun/SunTimes.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "app/Angles.hpp"
#include "support/Golden.hpp"

namespace norvane {
namespace {

TEST(SunTimes, JulianDayAtMidnightMatchesMeeus) {
  // 2024-02-29: January and February count as months 13 and 14 of the year before.
  struct Row {
    int16_t d, m, y;
    double jd;
  } rows[] = {
      {1, 1, 2000, 2451544.5}, {4, 10, 1957, 2436115.5}, {27, 1, 1987, 2446822.5}, {19, 6, 1988, 2447331.5},
      {1, 1, 1900, 2415020.5}, {21, 3, 2009, 2454911.5}, {29, 2, 2024, 2460369.5}, {31, 12, 2100, 2488433.5},
  };
  for (const Row& r : rows) EXPECT_DOUBLE_EQ(GetJulianDay(r.d, r.m, r.y), r.jd) << r.y << "-" << r.m << "-" << r.d;
}

TEST(SunTimes, SunPositionMatchesMeeusLowAccuracyExamples) {
  // Meeus, Astronomical Algorithms, examples 25.a and 28.b: 1992 October 13.0 TD.
  const double T = (2448908.5 - 2451545.0) / 36525;
  const SunPosition p = GetSunPosition(T);
  EXPECT_NEAR(p.declination * kRadToDeg, -7.78507, 0.00002);
  EXPECT_NEAR(p.equationOfTime, 13 + 42.7 / 60, 0.01);  // +13 min 42.7 s
}

TEST(SunTimes, FormatMinutesRoundsHalvesToEvenAndWrapsTheDay) {
  struct Row {
    double minutes;
    const char* text;
  } rows[] = {
      {0, "00:00"},      {61.5, "01:02"},   {62.5, "01:02"},                       // halves to even
      {1438.5, "23:58"}, {1439.4, "23:59"}, {1439.5, "00:00"}, {2880.2, "00:00"},  // rounds to 1440
      {1500, "01:00"},   {-10, "23:50"},  // a local-time shift may leave an event just before 00:00
  };
  for (const Row& r : rows) EXPECT_EQ(FormatMinutes(r.minutes), r.text) << r.minutes;
}

TEST(SunTimes, ScreenResultsForKnownPlacesAndDates) {
  for (const test::GoldenRow& r : test::ReadGolden("sun/data/sun-times.txt")) {
    SunQuery q;
    q.latitudeDeg = r.Num(0);
    q.longitudeDeg = r.Num(1);
    q.year = int16_t(std::stoi(r[2].substr(0, 4)));
    q.month = int16_t(std::stoi(r[2].substr(5, 2)));
    q.day = int16_t(std::stoi(r[2].substr(8, 2)));
    q.localTime = r[3] != "-";
    if (q.localTime) {  // hours, or h:mm
      const size_t colon = r[3].find(':');
      const int hours = std::stoi(r[3].substr(0, colon));
      const int minutes = colon == std::string::npos ? 0 : std::stoi(r[3].substr(colon + 1));
      q.ltOffsetMinutes = hours * 60 + (r[3][0] == '-' ? -minutes : minutes);
    }
    q.twilightIndex = std::stoi(r[4]);
    const SunTexts t = CalculateSunTimes(q);
    EXPECT_EQ(std::vector<std::string>({t.sunrise, t.sunset, t.dawn, t.dusk, t.message}),
              std::vector<std::string>(r.fields.begin() + 5, r.fields.end()))
        << r.where;
    EXPECT_EQ(t.calculated, t.sunrise != "None");
  }
}

}  // namespace
}  // namespace norvane
