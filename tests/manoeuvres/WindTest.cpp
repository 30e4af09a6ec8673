#include "manoeuvres/Wind.hpp"

#include <cmath>

#include <gtest/gtest.h>

#include "app/Angles.hpp"
#include "support/Golden.hpp"

using namespace norvane;

// Every mode's texts, from the golden table.
TEST(Wind, Texts) {
  for (const test::GoldenRow& r : test::ReadGolden("manoeuvres/data/wind-texts.txt")) {
    const double a = r.Num(1), b = r.Num(2), c = r.Num(3);
    const WindTexts t = r[0] == "known"     ? KnownWindTexts(a, b, c, r.Num(4))
                        : r[0] == "unknown" ? UnknownWindTexts(a, b, c, r.Num(4))
                                            : RunwayWindTexts(a, b, c);
    std::vector<std::string> want(r.fields.begin() + 5, r.fields.end());  // an error text, or the texts
    if (want.size() > 1) want.insert(want.begin(), "");
    const int count = want.size() > 1 ? int(want.size()) - 1 : 0;
    want.resize(5);
    EXPECT_EQ((std::vector<std::string>{t.message, t.text[0], t.text[1], t.text[2], t.text[3]}), want) << r.where;
    EXPECT_EQ(t.count, count) << r.where;
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
          EXPECT_NEAR(std::remainder(u.windDirection - wd, 360.0), 0, 1e-9)
              << tas << " " << trk << " " << ws << " " << wd;
          EXPECT_NEAR(u.drift, k.wca, 1e-9);
          EXPECT_FALSE(u.inconsistent);
        }
}
