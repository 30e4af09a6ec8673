#include "sun/SunTimes.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "app/Angles.hpp"
#include "support/Golden.hpp"

namespace norvane {
namespace {

TEST(SunTimes, JulianDayAtMidnightMatchesMeeus) {
  for (const test::GoldenRow& r : test::ReadGolden("sun/data/calendar.txt", "jd")) {
    const auto n = [&r](size_t i) { return int16_t(r.Num(i)); };
    EXPECT_DOUBLE_EQ(GetJulianDay(n(2), n(1), n(0)), r.Num(3)) << r.where;
  }
}

TEST(SunTimes, SunPositionMatchesMeeusLowAccuracyExamples) {
  // Meeus, Astronomical Algorithms, examples 25.a and 28.b: 1992 October 13.0 TD.
  const double T = (2448908.5 - 2451545.0) / 36525;
  const SunPosition p = GetSunPosition(T);
  EXPECT_NEAR(p.declination * kRadToDeg, -7.78507, 0.00002);
  EXPECT_NEAR(p.equationOfTime, 13 + 42.7 / 60, 0.01);  // +13 min 42.7 s
}

TEST(SunTimes, FormatMinutesRoundsHalvesToEvenAndWrapsTheDay) {
  for (const test::GoldenRow& r : test::ReadGolden("sun/data/calendar.txt", "minutes"))
    EXPECT_EQ(FormatMinutes(r.Num(0)), r[1]) << r.where;
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
