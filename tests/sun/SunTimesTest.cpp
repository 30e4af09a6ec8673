#include "sun/SunTimes.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "app/Angles.hpp"

namespace norvane {
namespace {

TEST(SunTimes, JulianDayAtMidnightMatchesMeeus) {
  struct Row {
    int16_t d, m, y;
    double jd;
  } rows[] = {
      {1, 1, 2000, 2451544.5},  {4, 10, 1957, 2436115.5}, {27, 1, 1987, 2446822.5},
      {19, 6, 1988, 2447331.5}, {1, 1, 1900, 2415020.5},  {21, 3, 2009, 2454911.5},
      {29, 2, 2024, 2460369.5},  // January and February count as months 13 and 14 of the year before
      {31, 12, 2100, 2488433.5},
  };
  for (const Row& r : rows)
    EXPECT_DOUBLE_EQ(GetJulianDay(r.d, r.m, r.y), r.jd) << r.y << "-" << r.m << "-" << r.d;
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
      {0, "00:00"},       {363.85, "06:04"},  {61.5, "01:02"},    {62.5, "01:02"},  // halves to even
      {1438.5, "23:58"},  {1439.4, "23:59"},  {1439.5, "00:00"},  {1439.6, "00:00"},  // rounds to 1440
      {1440, "00:00"},    {2880.2, "00:00"},  {1500, "01:00"},
      {-10, "23:50"},  // a local-time shift may leave an event just before 00:00
  };
  for (const Row& r : rows) EXPECT_EQ(FormatMinutes(r.minutes), r.text) << r.minutes;
}

TEST(SunTimes, ScreenResultsForKnownPlacesAndDates) {
  struct Row {
    const char* what;
    double lat, lon;
    int16_t d, m, y;
    bool lt;
    int offset, twilight;
    const char *rise, *set, *dawn, *dusk, *message;
  } rows[] = {
      {"equator, equinox", 0, 0, 21, 3, 2009, false, 0, 0, "06:04", "18:10", "05:43", "18:31", ""},
      {"170 E: rise 316 min before 00:00 UTC", 0, 170, 21, 3, 2009, false, 0, 0, "18:44", "06:51", "18:23", "07:11",
       "Sunrise previous day"},
      {"170 W: set after 24:00 UTC", 0, -170, 21, 3, 2009, false, 0, 0, "17:24", "05:30", "17:03", "05:51",
       "Sunset next day"},
      {"midnight sun", 78, 0, 21, 6, 2009, false, 0, 0, "None", "None", "None", "None", "Permanent day/night"},
      {"local time +2", 0, 0, 21, 3, 2009, true, 2, 0, "08:04", "20:10", "07:43", "20:31", ""},
      // The set before 00:00 after a -12 h shift wraps into the day (it read "-5:-9").
      {"local time -12 at 170 E", 0, 170, 21, 3, 2009, true, -12, 0, "06:44", "18:51", "06:23", "19:11",
       "Sunrise previous day"},
      // Nautical and astronomical twilight at the equinox: 05:19 / 18:55 and 04:55 / 19:19 by PyEphem.
      {"nautical", 0, 0, 21, 3, 2009, false, 0, 1, "06:04", "18:10", "05:19", "18:55", ""},
      {"astronomical", 0, 0, 21, 3, 2009, false, 0, 2, "06:04", "18:10", "04:55", "19:19", ""},
      // No permanence test for twilight: the sun never gets 12 degrees down, dawn and dusk coincide.
      {"nautical twilight never ends", 60, 0, 21, 6, 2009, false, 0, 1, "02:36", "21:28", "00:02", "00:02", ""},
  };
  for (const Row& r : rows) {
    SunQuery q;
    q.latitudeDeg = r.lat;
    q.longitudeDeg = r.lon;
    q.day = r.d;
    q.month = r.m;
    q.year = r.y;
    q.localTime = r.lt;
    q.ltOffsetHours = r.offset;
    q.twilightIndex = r.twilight;
    const SunTexts t = CalculateSunTimes(q);
    SCOPED_TRACE(r.what);
    EXPECT_EQ(t.sunrise, r.rise);
    EXPECT_EQ(t.sunset, r.set);
    EXPECT_EQ(t.dawn, r.dawn);
    EXPECT_EQ(t.dusk, r.dusk);
    EXPECT_EQ(t.message, r.message);
    EXPECT_EQ(t.calculated, t.sunrise != "None");
  }
}

TEST(SunTimes, RiseAndSetMinutesBeforeWrapping) {
  // 0 N 170 E, 21 March 2009: the rise falls 316 minutes before 00:00 UTC.
  const RiseSetMinutes r = GetRiseDownTime(21, 3, 2009, 0, 170 * kDegToRad, kZenithSunriseSunset);
  EXPECT_NEAR(r.rise, -316, 0.5);
  EXPECT_NEAR(r.set, 6 * 60 + 51, 0.5);
  // Where the sun stays up the clamped arccosine gives set - rise = 24 h.
  const RiseSetMinutes day = GetRiseDownTime(21, 6, 2009, 78 * kDegToRad, 0, kZenithSunriseSunset);
  EXPECT_NEAR(day.set - day.rise, 1440, 1);
}

}  // namespace
}  // namespace norvane
