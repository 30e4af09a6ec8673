#include "atmosphere/AtmosphereCalculations.hpp"

#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Golden.hpp"

#include "atmosphere/StandardAtmosphere.hpp"

using namespace norvane;

// Every screen's texts, from the golden table.
TEST(AtmosphereScreens, ResultTexts) {
  for (const test::GoldenRow& r : test::ReadGolden("atmosphere/data/atmosphere-texts.txt")) {
    const auto n = [&r](size_t i) { return r.Num(i); };
    std::vector<std::string> shown;
    size_t first = 0;  // of the expected texts
    if (r[0] == "atmosphere") {
      const AtmosphereDataResult v =
          ComputeAtmosphereData({n(1), n(2) != 0, n(3) != 0, n(4), n(5), n(6) != 0, n(7) != 0});
      shown = {v.temperature.text, v.pressure.text, v.density.text, v.sound.text,
               v.theta.text,       v.delta.text,    v.sigma.text};
      first = 8;
    } else if (r[0] == "speed") {
      const SpeedCalculationResult v = ComputeSpeeds({n(1), static_cast<SpeedInput>(n(2)), n(3), n(4), n(5) != 0});
      shown = {v.cas.text, v.tas.text, v.mach.text, v.eas.text, v.tat.text, v.q.text};
      first = 6;
    } else if (r[0] == "changeover") {
      const ChangeoverResult c = ComputeChangeover(n(1), n(2));
      shown = {c.altitude.text, c.flightLevel.text, c.error};
      first = 3;
    } else {
      const DensityAltitudeResult d = ComputeDensityAltitude({n(1), n(2), n(3), n(4), n(5) != 0});
      shown = {r[6] == "-" ? "-" : d.pressure.text, d.humidity.text, d.densityAltitude.text};
      first = 6;
    }
    EXPECT_EQ(shown, std::vector<std::string>(r.fields.begin() + first, r.fields.end())) << r.where;
  }
}

TEST(AtmosphereData, RangesAndScrollTexts) {
  for (const test::GoldenRow& r : test::ReadGolden("atmosphere/data/standard-atmosphere.txt", "range")) {
    const bool feet = r[0] == "ft", geopotential = r[1] == "geopotential";
    const Quantity range = AtmosphereAltitude(feet, geopotential);
    EXPECT_EQ(std::pair(range.min, range.max), std::pair(r.Num(2), r.Num(3))) << r.where;
    // The top of every range stays inside the model (84852 m geopotential).
    const double topM = feet ? range.max * 0.3048 : range.max;
    EXPECT_LE(geopotential ? topM : GeometricToGeopotential(topM), 84852.0) << r.where;
  }
  EXPECT_EQ(MslpScrollText(0, true), "Std");
  EXPECT_EQ(MslpScrollText(-13, false), "1000");
  EXPECT_EQ(MslpScrollText(-10, true), "29.82");
  EXPECT_DOUBLE_EQ(MslpHpaFromScroll(0, false), 1013.25);  // 0 is standard, not 1013
  EXPECT_DOUBLE_EQ(MslpHpaFromScroll(0, true), 1013.25);   // nor 29.92 inHg
  EXPECT_DOUBLE_EQ(MslpHpaFromScroll(-143, false), 870);
  EXPECT_EQ(MslpScrollRange(true), (std::pair{-423, 209}));  // 25.69 and 32.01 inHg
}

// The boxes' tool tips as the screens word them, from the quantities.
TEST(AtmosphereQuantities, ToolTips) {
  EXPECT_EQ(ToolTipText(AtmosphereAltitude(true, true)), "(Geopotential altitude -1500 to 278385 ft)");
  EXPECT_EQ(ToolTipText(InputSpeed(SpeedInput::Mach)), "Mach number (0 to 3.00)");
  EXPECT_EQ(ToolTipText(DewPoint(false)), "Dew point (-75 to 55\u00b0C)");
  EXPECT_EQ(ToolTipText(Mtow(true)), "Maximum takeoff weight (1000 to 1 500 000 lb)");
  EXPECT_EQ(ToolTipText(kReferenceStallSpeed), "Stall speed at sea level and MTOW (CAS ; 20 to 300 kts)");
  EXPECT_EQ(ToolTipText(kDisa), "Temperature offset from standard atmosphere (-90 to +40\u00b0C)");
}

TEST(SpeedCalculation, InputFieldIsTheEnteredValue) {
  // The input quantity's field is the entered value itself.
  EXPECT_EQ(ComputeSpeeds({350, SpeedInput::CAS, 272.4, 0, false}).cas.value, 272.4);
}

TEST(DensityAltitude, SaturationVapourPressureMatchesMeteorologicalTables) {
  for (const test::GoldenRow& r : test::ReadGolden("atmosphere/data/standard-atmosphere.txt", "vapour"))
    EXPECT_NEAR(SaturationVapourPressure(r.Num(0)) / r.Num(1), 1, 5e-4) << r.where;
}

TEST(DensityAltitude, StationPressureDewPointAndDryAir) {
  // QNH 1013.25 at sea level: station pressure 1013.25 (shown either side of the tie).
  EXPECT_NEAR(*ComputeDensityAltitude({1013.25, 15, -75, 0, false}).pressure.value, 1013.25, 1e-9);

  EXPECT_EQ(ComputeDensityAltitude({1013.25, 20, 25, 0, false}).dewPointUsed, 20);
  EXPECT_FALSE(ComputeDensityAltitude({1013.25, 20, 20, 0, false}).dewPointLowered);

  // Dry air against the National Weather Service formula
  // DA = 145442.16 (1 - (17.326 P / T)^0.235), P station pressure in inHg, T in Rankine.
  for (double t : {-20.0, 0.0, 15.0, 30.0, 45.0})
    for (double elev : {0.0, 5000.0, 12000.0}) {
      const DensityAltitudeResult d = ComputeDensityAltitude({1013.25, t, -75, elev, false});
      const double P = *d.pressure.value / 33.86389;
      const double nws = 145442.16 * (1 - std::pow(17.326 * P / (t * 1.8 + 32 + 459.67), 0.235));
      EXPECT_NEAR(*d.densityAltitude.value, nws, 25) << t << " " << elev;
    }
}

TEST(StallSpeed, Identities) {
  const StallSpeedInput base{true, 0, 0, 60, 1000, 1000, 0, 0, false};
  const auto ktas = [](const StallSpeedInput& in) { return *ComputeStallSpeed(in).ktas.value; };
  // Sea level, weight = MTOW, wings level: the reference stall speed comes back.
  EXPECT_EQ(ComputeStallSpeed(base).kcas.text, "60.0");
  EXPECT_NEAR(ktas(base), 60, 1e-9);
  StallSpeedInput banked = base;
  banked.bankDeg = 60;  // load factor 2
  EXPECT_NEAR(ktas(banked) / 60, std::sqrt(2.0), 1e-12);
  StallSpeedInput light = base;
  light.weight = 250;  // a quarter of the weight
  EXPECT_NEAR(ktas(light), 30, 1e-9);

  // Aerodynamic data in SI and in US units describe the same aeroplane; 1000 kg, CL 1.6, 16.2 m2:
  // Vs = sqrt(2 W g / (rho0 CL S)) = 24.85 m/s at sea level.
  const StallSpeedInput si{false, 1.6, 16.2, 0, 1111, 1000, 8000, 20, false};
  const StallSpeedInput us{false, 1.6, 16.2 / 0.3048 / 0.3048, 0, 1111 / 0.45359237, 1000 / 0.45359237, 8000, 20, true};
  EXPECT_NEAR(*ComputeStallSpeed(si).kcas.value, *ComputeStallSpeed(us).kcas.value, 1e-9);
  EXPECT_EQ(ComputeStallSpeed({false, 1.6, 16.2, 0, 1111, 1000, 0, 0, false}).ktas.text, "48.3");

  // With altitude the true stall speed grows with 1/sqrt(sigma) while the calibrated one stays
  // (it differs from EAS only by compressibility, a few hundredths of a knot at these speeds).
  StallSpeedInput high = base;
  high.altitudeFt = 10000;
  EXPECT_NEAR(*ComputeStallSpeed(high).kcas.value, 60, 0.05);
  EXPECT_NEAR(ktas(high), 60 / std::sqrt(0.7385), 0.05);  // sigma at 10000 ft, ICAO table
  // Supersonic true stall speed: no calibrated value.
  EXPECT_EQ(ComputeStallSpeed({false, 0.5, 10, 0, 700000, 700000, 65000, 60, false}).kcas.text, "NA");
}
