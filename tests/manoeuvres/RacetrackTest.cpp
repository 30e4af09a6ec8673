#include "manoeuvres/Racetrack.hpp"

#include <cmath>

#include <gtest/gtest.h>

#include "manoeuvres/Turn.hpp"
#include "manoeuvres/Wind.hpp"

using namespace norvane;

namespace {

constexpr double kRad = M_PI / 180;

RacetrackResult Solve(double course, double tas, double wd, double ws, bool right = true,
                      std::optional<double> bank = 25, double rate = 3, double leg = 1) {
  return ComputeRacetrack({course, tas, wd, ws, leg, right, bank, rate});
}

// Flies the solved pattern in small time steps, heading by heading, in an earth frame (north,
// east) with the air mass drifting; returns the distance from the fix at the end of the inbound
// leg and the cross-track offset from the inbound course at the roll-out.
struct Flown {
  double missNm, crossNm;
};
Flown Fly(const RacetrackResult& r, double course, double tas, double wd, double ws, bool right, double leg) {
  const double dt = 0.1, kt = 1 / 3600.0;
  const double wn = -ws * std::cos(wd * kRad), we = -ws * std::sin(wd * kRad);
  double n = 0, e = 0, hdg = r.value[kRtInboundHeading];
  const double rate = r.value[kRtRate] * (right ? 1 : -1);
  const auto move = [&](double h, double s) {
    n += (tas * std::cos(h * kRad) + wn) * s * kt;
    e += (tas * std::sin(h * kRad) + we) * s * kt;
  };
  const auto turnTo = [&](double target) {
    double left = std::fmod(std::fmod((target - hdg) * (right ? 1 : -1), 360) + 360, 360);
    for (; left > 0; left -= std::fabs(rate) * dt) {
      const double s = std::min(dt, left / std::fabs(rate));
      move(hdg + rate * s / 2, s);  // midpoint heading
      hdg += rate * s;
    }
    hdg = target;
  };
  turnTo(r.value[kRtOutboundHeading]);
  move(hdg, r.value[kRtOutboundTime]);
  turnTo(r.value[kRtInboundHeading]);
  const double cross = -n * std::sin(course * kRad) + e * std::cos(course * kRad);
  move(hdg, leg * 60);
  return {std::hypot(n, e), cross};
}

}  // namespace

TEST(Racetrack, NoWindIsTheTextbookPattern) {
  const RacetrackResult r = Solve(90, 180, 0, 0);
  ASSERT_EQ(r.error, "");
  EXPECT_EQ(r.text[kRtInboundHeading], "090");
  EXPECT_EQ(r.text[kRtOutboundHeading], "270");
  EXPECT_EQ(r.text[kRtOutboundCorrection], "0");
  EXPECT_EQ(r.text[kRtOutboundTime], "1:00");
  EXPECT_EQ(r.text[kRtOutboundGs], "180");
  const double radius = r.value[kRtRadius];
  EXPECT_NEAR(r.value[kRtLength], 3 + 2 * radius, 1e-3);  // 1 minute at 180 kt
  EXPECT_NEAR(r.value[kRtWidth], 2 * radius, 1e-3);
  EXPECT_NEAR(r.value[kRtPatternTime], 60 + 60 + 360 / r.value[kRtRate], 1e-9);
}

TEST(Racetrack, CrossHeadAndTailWind) {
  // Wind from the right of a north course: the outbound heading corrects into the wind by about
  // three times the inbound drift.
  const RacetrackResult x = Solve(360, 120, 90, 20, true, std::nullopt);
  const double wca = x.value[kRtInboundHeading];
  EXPECT_NEAR(wca, std::asin(20.0 / 120) / kRad, 1e-9);
  EXPECT_NEAR(x.value[kRtOutboundCorrection], -3 * wca, 0.1 * 3 * wca);
  // A head wind inbound is a tail wind outbound, which carries the aircraft out faster, and the
  // turns drift it back towards the roll-out point: a shorter outbound leg (the pilots' rule).
  // 100 kt inbound: 1.667 NM leg, 0.667 NM drift in the 2 minutes of turns, 1 NM at 140 kt out.
  EXPECT_NEAR(Solve(360, 120, 360, 20, true, std::nullopt).value[kRtOutboundTime], 3600 / 140.0, 1e-9);
  EXPECT_NEAR(Solve(360, 120, 180, 20, true, std::nullopt).value[kRtOutboundTime], 3 * 3600 / 100.0, 1e-9);

  EXPECT_EQ(Solve(360, 100, 360, 60).error, kNoRacetrackText);  // drifts past the roll-out point
  EXPECT_EQ(Solve(360, 100, 90, 120).error, kTooStrongWindText);
}

// An independent check: the solved pattern, flown step by step, rolls out on the inbound course
// and comes back to the fix.
TEST(Racetrack, SimulatedCircuitReturnsToTheFix) {
  int flown = 0;
  for (double tas : {100, 250})
    for (double ws : {0, 20, 60})
      for (double wd : {0, 70, 135, 200, 290})
        for (bool right : {true, false})
          for (std::optional<double> bank : kMaxBankChoices)
            for (double rate : kTurnRateChoices) {
              const double course = 215, leg = rate == 3 ? 1 : 1.5;
              const RacetrackResult r = Solve(course, tas, wd, ws, right, bank, rate, leg);
              if (!r.error.empty()) {
                EXPECT_EQ(r.error, kNoRacetrackText);
                continue;
              }
              const Flown f = Fly(r, course, tas, wd, ws, right, leg);
              SCOPED_TRACE(testing::Message()
                           << tas << " " << ws << "@" << wd << " " << right << bank.value_or(0) << rate);
              EXPECT_LT(std::fabs(f.crossNm), 0.01);
              EXPECT_LT(f.missNm, 0.01);
              ++flown;
            }
  EXPECT_GT(flown, 400);
}
