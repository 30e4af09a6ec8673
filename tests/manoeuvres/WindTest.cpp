#include "manoeuvres/Wind.hpp"

#include <cmath>

#include <gtest/gtest.h>

#include "app/Angles.hpp"

using namespace norvane;

namespace {

struct WindRow {
  double a, b, c, d;         // the boxes in screen order
  const char* message;       // nullptr when results are shown
  const char* text[4];
};

void ExpectTexts(const WindTexts& t, const WindRow& r, int count) {
  if (r.message) {
    EXPECT_EQ(t.message, r.message);
    EXPECT_EQ(t.count, 0);
    return;
  }
  EXPECT_EQ(t.message, "");
  ASSERT_EQ(t.count, count);
  for (int i = 0; i < count; ++i) EXPECT_EQ(t.text[i], r.text[i]) << "dataR" << i + 1;
}

}  // namespace

// TAS, track, wind speed, wind direction -> ground speed, heading, WCA, head/tail.
TEST(Wind, KnownWindTexts) {
  const WindRow rows[] = {
      {100, 0, 30, 90, nullptr, {"95", "017", "+17", "-5"}},
      {100, 360, 20, 360, nullptr, {"80", "000", "0", "-20"}},   // 360 taken as north
      {100, 90, 30, 360, nullptr, {"95", "073", "-17", "-5"}},   // wind from the left
      {1500, 0, 10, 270, nullptr, {"1500", "360", "0", "0"}},    // heading 359.6 shows as 360
      {100, 90, 100, 0, "Too strong wind for course", {}},       // WCA -90, GS 0
      {100, 0, 100, 0, "Too strong wind for course", {}},        // GS exactly 0
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(testing::Message() << r.a << " " << r.b << " " << r.c << " " << r.d);
    ExpectTexts(KnownWindTexts(r.a, r.b, r.c, r.d), r, 4);
  }
}

// The heading flown at TAS plus the wind must add up to the ground speed along the track
// (vector sum in north/east components, wind vector pointing away from where it blows from).
TEST(Wind, TriangleClosesAsVectorSum) {
  int solved = 0;
  for (double tas : {50.0, 120.0, 450.0})
    for (double trk = 0; trk < 360; trk += 15)
      for (double ws : {0.0, 10.0, 45.0, 150.0})
        for (double wd = 0; wd < 360; wd += 20) {
          const WindTriangle w = SolveWindTriangle(tas, trk, ws, wd);
          if (ws > tas) {
            EXPECT_TRUE(w.failed);
            continue;
          }
          if (w.failed) {
            // Only a headwind component at least as strong as the air speed can stop the aircraft.
            EXPECT_LE(tas * std::cos(w.wca * kDegToRad) - ws * std::cos((wd - trk) * kDegToRad), 1e-9);
            continue;
          }
          ++solved;
          const double hdg = (trk + w.wca) * kDegToRad;
          const double n = tas * std::cos(hdg) - ws * std::cos(wd * kDegToRad);
          const double e = tas * std::sin(hdg) - ws * std::sin(wd * kDegToRad);
          EXPECT_NEAR(n, w.groundSpeed * std::cos(trk * kDegToRad), 1e-9);
          EXPECT_NEAR(e, w.groundSpeed * std::sin(trk * kDegToRad), 1e-9);
          EXPECT_LE(std::fabs(w.wca), 90.0);
        }
  EXPECT_GT(solved, 2000);
}

// TAS, ground speed, track, heading -> wind speed, wind direction, WCA, head/tail.
TEST(Wind, UnknownWindTexts) {
  const WindRow rows[] = {
      {100, 95, 0, 17, nullptr, {"29", "089", "+17", "-5"}},
      {100, 100, 0, 0, nullptr, {"0", "000", "0", "0"}},         // atan2(0, 0) is 0
      {120, 100, 350, 10, nullptr, {"43", "063", "+20", "-20"}},  // drift across north
      {100, 102.5, 0, 0, nullptr, {"3", "180", "0", "+2"}},      // "0" rounds half away, CInt halves to even
      {100, 97.5, 0, 0, nullptr, {"3", "000", "0", "-2"}},
      {100, 100, 0, 100, "Inconsistent results, check input", {}},  // drift 100
      {300, 300, 0, 90, "Inconsistent results, check input", {}},   // drift of exactly 90
      {100, 100, 300, 31, "Inconsistent results, check input", {}}, // drift 91 across north
      {1500, 1300, 0, 0, "Inconsistent results, check input", {}},  // wind 200 kt
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(testing::Message() << r.a << " " << r.b << " " << r.c << " " << r.d);
    ExpectTexts(UnknownWindTexts(r.a, r.b, r.c, r.d), r, 4);
  }
}

// Solving for a known wind and then measuring it back gives the same wind.
TEST(Wind, UnknownWindInvertsKnownWind) {
  for (double tas : {90.0, 250.0})
    for (double trk = 5; trk < 360; trk += 40)
      for (double ws : {5.0, 35.0, 80.0})
        for (double wd = 0; wd < 360; wd += 30) {
          const WindTriangle k = SolveWindTriangle(tas, trk, ws, wd);
          ASSERT_FALSE(k.failed);
          const UnknownWind u = ComputeUnknownWind(tas, k.groundSpeed, trk, Norm360(trk + k.wca));
          EXPECT_NEAR(u.windSpeed, ws, 1e-9);
          EXPECT_NEAR(std::remainder(u.windDirection - wd, 360.0), 0, 1e-9) << tas << " " << trk << " " << ws << " " << wd;
          EXPECT_NEAR(u.drift, k.wca, 1e-9);
          EXPECT_FALSE(u.inconsistent);
        }
}

// Runway heading, wind speed, wind direction -> crosswind, head/tail.
TEST(Wind, RunwayWindTexts) {
  const WindRow rows[] = {
      {270, 20, 300, 0, nullptr, {"+10", "-17"}},
      {90, 10, 270, 0, nullptr, {"0", "+10"}},   // sin(180 degrees) is tiny, not zero
      {90, 15, 0, 0, nullptr, {"-15", "0"}},     // from the left
      {0, 25, 135, 0, nullptr, {"+18", "+18"}},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(testing::Message() << r.a << " " << r.b << " " << r.c);
    const WindTexts t = RunwayWindTexts(r.a, r.b, r.c);
    ExpectTexts(t, r, 2);
    EXPECT_EQ(t.text[2], "");
    EXPECT_EQ(t.text[3], "");
  }
}
