#include "manoeuvres/Turn.hpp"

#include <cmath>
#include <map>

#include <gtest/gtest.h>

#include "app/Angles.hpp"
#include "support/Golden.hpp"

using namespace norvane;

namespace {
constexpr std::nullopt_t kUl = std::nullopt;
std::vector<test::GoldenRow> Rows(const char* kind) { return test::ReadGolden("manoeuvres/data/turn-texts.txt", kind); }
}  // namespace

TEST(Turn, RateTurnTexts) {
  const std::map<std::string, std::optional<double>> banks{{"20", 20}, {"25", 25}, {"30", 30}, {"ul", kUl}};
  const std::map<std::string, RadiusUnit> units{
      {"NM", RadiusUnit::NauticalMiles}, {"m", RadiusUnit::Metres}, {"ft", RadiusUnit::Feet}};
  for (const test::GoldenRow& r : Rows("rate")) {
    const TurnTexts t =
        CalculateTurnTexts(r.Num(0), banks.at(r[1]), r.Num(2), units.at(r[3]), std::nullopt, std::nullopt);
    EXPECT_EQ(std::vector<std::string>({t.bank, t.rate, t.radius, t.gLoad, t.anticipation, t.finalDistance}),
              std::vector<std::string>({r[4], r[5], r[6], r[7], "", ""}))
        << r.where;
  }
}

// Coordinated level turn: radius V^2 / (g tan(bank)), rate V / radius, load factor 1/cos(bank),
// and the bank never exceeds the chosen maximum.
TEST(Turn, RateTurnObeysLevelTurnPhysics) {
  for (double tas = 50; tas <= 1500; tas += 35)
    for (std::optional<double> maxBank : {std::optional<double>(20), {25}, {30}, {}})
      for (double wanted : {1.5, 3.0}) {
        const RateTurn t = ComputeRateTurn(tas, maxBank, wanted);
        const double v = tas * 1852 / 3600;
        const double bank = t.bank * kDegToRad;
        EXPECT_NEAR(t.radius, v * v / (9.80665 * std::tan(bank)), 1e-9 * t.radius);
        EXPECT_NEAR(t.rate * kDegToRad * t.radius, v, 1e-9 * v);
        const double limit = maxBank.value_or(90);
        EXPECT_LE(t.bank, limit + 1e-12);
        if (t.bank < limit - 1e-9)
          EXPECT_NEAR(t.rate, wanted, 1e-12);  // rate turn flown
        else
          EXPECT_LT(t.rate, wanted);  // bank-limited
      }
}

TEST(Turn, AnticipationTexts) {
  for (const test::GoldenRow& r : Rows("anticipation")) {
    const TurnTexts t = CalculateTurnTexts(r.Num(0), kUl, r.Num(1), RadiusUnit::NauticalMiles, r.Num(2), r.Num(3));
    EXPECT_EQ(t.anticipation, r[4]) << r.where;
    EXPECT_EQ(t.finalDistance, r[5]) << r.where;
  }
  // One of the two inputs alone gives no anticipation.
  EXPECT_EQ(CalculateTurnTexts(120, kUl, 3, RadiusUnit::NauticalMiles, 90.0, std::nullopt).anticipation, "");
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
