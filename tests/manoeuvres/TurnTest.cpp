#include "manoeuvres/Turn.hpp"

#include <cmath>

#include <gtest/gtest.h>

#include "app/Angles.hpp"

using namespace norvane;

namespace {
constexpr int16_t k20 = 0, k25 = 1, k30 = 2, kUl = kMaxBankUnlimited;
}

// TAS, max bank, rate, radius unit -> the shown bank, rate, radius and g-load.
TEST(Turn, RateTurnTexts) {
  struct Row {
    double tas;
    int16_t bank;
    bool standard;
    RadiusUnit unit;
    const char *bankText, *rateText, *radiusText, *gText;
  };
  const Row rows[] = {
      {120, kUl, true, RadiusUnit::Metres, "18.2", "3.00", "1179.0", "1.05"},
      {120, kUl, true, RadiusUnit::Feet, "18.2", "3.00", "3868.2", "1.05"},  // 1179.0198 m = 3868.175 ft
      {120, k20, true, RadiusUnit::NauticalMiles, "18.2", "3.00", "0.637", "1.05"},  // inside the limit
      {300, k25, true, RadiusUnit::NauticalMiles, "25.0", "1.70", "2.812", "1.10"},  // needs 39.5 degrees
      {300, k30, false, RadiusUnit::NauticalMiles, "22.4", "1.50", "3.183", "1.08"},
      {1500, k30, true, RadiusUnit::NauticalMiles, "30.0", "0.42", "56.788", "1.15"},
      {50, k20, false, RadiusUnit::Metres, "3.9", "1.50", "982.5", "1.00"},
      {120, 7, true, RadiusUnit::NauticalMiles, "18.2", "3.00", "0.637", "1.05"},  // any other index: no limit
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(testing::Message() << r.tas << " " << r.bank << " " << r.standard);
    const TurnTexts t = CalculateTurnTexts(r.tas, r.bank, r.standard, r.unit, std::nullopt, std::nullopt);
    EXPECT_EQ(std::vector<std::string>({t.bank, t.rate, t.radius, t.gLoad, t.anticipation, t.finalDistance}),
              std::vector<std::string>({r.bankText, r.rateText, r.radiusText, r.gText, "", ""}));
  }
}

// Coordinated level turn: radius V^2 / (g tan(bank)), rate V / radius, load factor 1/cos(bank),
// and the bank never exceeds the chosen maximum.
TEST(Turn, RateTurnObeysLevelTurnPhysics) {
  const double maxBank[] = {20, 25, 30, 90};
  for (double tas = 50; tas <= 1500; tas += 35)
    for (int16_t i = 0; i < 4; ++i)
      for (bool standard : {false, true}) {
        const RateTurn t = ComputeRateTurn(tas, i, standard);
        const double v = tas * 1852 / 3600;
        const double bank = t.bank * kDegToRad;
        EXPECT_NEAR(t.radius, v * v / (9.80665 * std::tan(bank)), 1e-9 * t.radius);
        EXPECT_NEAR(t.rate * kDegToRad * t.radius, v, 1e-9 * v);
        EXPECT_LE(t.bank, maxBank[i] + 1e-12);
        const double wanted = standard ? 3.0 : 1.5;
        if (t.bank < maxBank[i] - 1e-9) EXPECT_NEAR(t.rate, wanted, 1e-12);  // rate turn flown
        else EXPECT_LT(t.rate, wanted);                                         // bank-limited
      }
}

// Intercept angle, distance -> anticipation and final distance, TAS 120 kt at standard rate
// (radius 0.637 NM) unless noted.
TEST(Turn, AnticipationTexts) {
  struct Row { double tas; bool standard; double angle, distance; const char *anticipation, *finalDistance; };
  const Row rows[] = {
      {120, true, 90, 5, "7.3", "4.3"},
      {120, true, 45, 40, "0.3", "39.5"},
      {300, false, 90, 5, "39.5", "0.7"},
      {400, false, 90, 5, "58.1", "past"},   // the turn ends beyond the station
      {1500, false, 90, 5, "NA", "NA"},      // x far above 1
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(testing::Message() << r.tas << " " << r.angle << " " << r.distance);
    const TurnTexts t = CalculateTurnTexts(r.tas, kUl, r.standard, RadiusUnit::NauticalMiles, r.angle, r.distance);
    EXPECT_EQ(t.anticipation, r.anticipation);
    EXPECT_EQ(t.finalDistance, r.finalDistance);
  }
  // One of the two inputs alone gives no anticipation.
  EXPECT_EQ(CalculateTurnTexts(120, kUl, true, RadiusUnit::NauticalMiles, 90.0, std::nullopt).anticipation, "");
}

// Independent plane geometry: station at the origin, the aircraft intercepts the inbound radial
// along the x axis at point P, flying a track that meets the radial at theta. The turn of radius R
// starts R tan(theta/2) before P and ends R tan(theta/2) after it, towards the station.
TEST(Turn, AnticipationMatchesInterceptGeometry) {
  for (double theta : {10.0, 30.0, 45.0, 60.0, 90.0})
    for (double sp : {3.0, 8.0, 20.0, 40.0})
      for (double r : {0.3, 1.0, 2.5}) {
        const double lead = r * std::tan(theta / 2 * kDegToRad);
        // Inbound along the radial means heading towards -x; the track before the turn comes in
        // at theta from that direction.
        const double tx = sp + lead * std::cos(theta * kDegToRad);
        const double ty = lead * std::sin(theta * kDegToRad);
        const double d = std::hypot(tx, ty);
        const TurnAnticipation a = ComputeTurnAnticipation(theta, d, r);
        ASSERT_TRUE(a.possible);
        EXPECT_NEAR(a.angle, std::atan2(ty, tx) * kRadToDeg, 1e-9);
        EXPECT_NEAR(a.finalDistance, sp - lead, 1e-9);
      }
}
