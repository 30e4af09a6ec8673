// The descent model against a 1-ft slice integration of its own physics, and the physical checks
// a pilot can make by hand.
#include "atmosphere/Descent.hpp"

#include <cmath>

#include <gtest/gtest.h>

#include "app/TextFormat.hpp"
#include "atmosphere/StandardAtmosphere.hpp"

using namespace norvane;

namespace {

constexpr double kDeg = 3.14159265358979 / 180;

struct Reference {
  double nm = 0, seconds = 0;
};

// Slice by slice of 1 ft, each at its middle: time from the rate, or ground distance from the
// true height over the slope; the ground speed of a given slope by fixed-point iteration.
Reference Integrate(const DescentInput& in, double rateFpm, double angleDeg) {
  Reference r;
  const int slices = static_cast<int>(in.initialFt - in.finalFt);
  for (int i = 0; i < slices; ++i) {
    const double h = in.initialFt - i - 0.5;
    double tas = TASFromCAS(in.ias, h, in.disa);
    if (in.mach) tas = std::fmin(tas, TASFromMach(*in.mach, h, in.disa));
    const double tStd = GetStdTemperature(h * 0.3048) + 273.15;
    const double trueFt = (tStd + in.disa) / tStd;
    if (rateFpm > 0) {
      const double vzKt = rateFpm * trueFt * 60 / (1852 / 0.3048);
      const double dtH = 1 / rateFpm / 60;
      r.nm += (std::sqrt(tas * tas - vzKt * vzKt) + in.windKt) * dtH;
      r.seconds += dtH * 3600;
    } else {
      const double t = std::tan(angleDeg * kDeg);
      double gs = tas + in.windKt;
      for (int k = 0; k < 60; ++k) gs = std::sqrt(tas * tas - gs * t * gs * t) + in.windKt;
      const double dxNm = trueFt / t / (1852 / 0.3048);
      r.nm += dxNm;
      r.seconds += dxNm / gs * 3600;
    }
  }
  return r;
}

DescentInput Case(double from, double to, double ias, std::optional<double> mach, double wind, double disa,
                  DescentGiven given, double value) {
  return {from, to, ias, mach, wind, disa, given, value};
}

}  // namespace

// Across the tropopause (36089 ft) and the changeover, Delta ISA -30..+30, winds of 80 kt.
TEST(Descent, AgreesWithFineIntegration) {
  using G = DescentGiven;
  const DescentInput rows[] = {
      Case(39000, 3000, 250, 0.78, -80, -30, G::Rate, 2500),  // changeover above the tropopause
      Case(41000, 1000, 300, 0.80, 80, 30, G::Rate, 3000),
      Case(24000, -1000, 250, std::nullopt, 40, 10, G::Rate, 1500),
      Case(37000, -1000, 280, 0.78, 0, 15, G::Angle, 3),
      Case(45000, 10000, 320, 0.84, -80, -20, G::Angle, 2.5),
      Case(39000, 5000, 260, 0.76, 80, 0, G::Angle, 3.5),
      Case(35000, 3000, 280, 0.78, -60, 20, G::Distance, 120),
      Case(41000, 2000, 290, 0.80, 80, -30, G::Distance, 160),
  };
  for (const DescentInput& in : rows) {
    SCOPED_TRACE(testing::Message() << in.initialFt << " " << in.ias << " " << static_cast<int>(in.given));
    const DescentResult d = ComputeDescent(in);
    ASSERT_EQ(d.error, "");
    const bool angle = in.given == G::Angle;
    // The distance mode returns the rate whose distance is the one given.
    const Reference ref = Integrate(in, angle ? 0 : *d.rodTop.value, angle ? in.value : 0);
    EXPECT_NEAR(*d.distance.value, ref.nm, 0.01);
    EXPECT_NEAR(*d.time.value, ref.seconds, 1);
    if (in.given == G::Distance) {
      EXPECT_NEAR(ref.nm, in.value, 0.01);
    }
    EXPECT_NEAR(d.profile.back().distanceNm, *d.distance.value, 1e-9);
  }
}

TEST(Descent, PhysicalChecks) {
  // 3 degrees in still standard air: 6076.12 tan 3 = 318 ft/NM, 5.3 ft/min per knot.
  const DescentResult a = ComputeDescent(Case(10000, 2000, 250, std::nullopt, 0, 0, DescentGiven::Angle, 3));
  EXPECT_EQ(a.gradient.text, "318");
  EXPECT_EQ(a.angle.text, "3.00");
  EXPECT_NEAR(*a.rodBottom.value / (*a.tasBottom.value * std::cos(3 * kDeg)), 5.3, 0.01);
  EXPECT_GT(*a.rodTop.value, *a.rodBottom.value);  // the TAS grows with altitude

  // TAS at the top as the speed screen shows it at that level; the changeover screen's altitude.
  const DescentResult r = ComputeDescent(Case(35000, 3000, 250, std::nullopt, 0, 0, DescentGiven::Rate, 2000));
  EXPECT_EQ(r.tasTop.text, ComputeSpeeds({350, SpeedInput::CAS, 250, 0, false}).tas.text);
  EXPECT_EQ(r.changeover.text, "None");
  const DescentResult c = ComputeDescent(Case(35000, 3000, 300, 0.78, 0, 10, DescentGiven::Rate, 2000));
  EXPECT_EQ(c.changeover.text, ComputeChangeover(300, 0.78).altitude.text);
  EXPECT_EQ(c.time.text, "16:00");
  EXPECT_EQ(c.rodBottom.text, "2000");

  // A tail wind adds wind * time when the rate is given.
  const DescentResult w = ComputeDescent(Case(35000, 3000, 300, 0.78, 60, 10, DescentGiven::Rate, 2000));
  EXPECT_NEAR(*w.distance.value - *c.distance.value, 60 * *c.time.value / 3600, 1e-9);

  EXPECT_EQ(FormatMinutesSeconds(4519.6), "75:20");
}

TEST(Descent, ErrorTexts) {
  using G = DescentGiven;
  struct Row {
    DescentInput in;
    std::string_view error;
  };
  const Row rows[] = {
      {Case(3000, 3000, 250, {}, 0, 0, G::Rate, 2000), kDescentFinalNotBelow},
      {Case(5000, 0, 50, {}, 0, 0, G::Rate, 10000), kDescentRateTooHigh},  // 99 kt down at 50 kt
      {Case(5000, 0, 100, {}, -150, 0, G::Angle, 3), kDescentHeadWind},
      {Case(35000, 3000, 250, 0.78, 0, 0, G::Distance, 1), kDescentTooShort},
      {Case(30000, 0, 60, {}, -50, 0, G::Distance, 1), kDescentHeadWind},  // GS 0 below 10000 ft/min
  };
  for (const Row& row : rows) {
    const DescentResult d = ComputeDescent(row.in);
    EXPECT_EQ(d.error, row.error);
    EXPECT_EQ(d.distance.text, "");
    EXPECT_TRUE(d.profile.empty());
  }
}
