#include "atmosphere/AtmosphereCalculations.hpp"

#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "atmosphere/StandardAtmosphere.hpp"

using namespace norvane;

namespace {
std::vector<std::string> Texts(const AtmosphereDataResult& r) {
  std::vector<std::string> out;
  for (const ShownValue& v : r.results) out.push_back(v.text);
  return out;
}
}  // namespace

// Atmosphere data: input and the seven texts the screen shows (temperature, pressure, density,
// speed of sound, theta, delta, sigma).
TEST(AtmosphereData, ResultTexts) {
  struct Row {
    const char* what;
    AtmosphereDataInput in;
    std::vector<std::string> texts;
  };
  const Row rows[] = {
      {"sea level, standard", {0, false, false, 0, 1013.25, false, false},
       {"15.0", "1013.250", "1.224999", "1225.1", "1.0000000", "1.0000000", "1.0000000"}},
      {"tropopause, geopotential", {11000, false, true, 0, 1013.25, false, false},
       {"-56.5", "226.321", "0.363918", "1062.3", "0.7518653", "0.2233611", "0.2970759"}},
      {"sea level, US units", {0, true, false, 0, 1013.25, true, false},
       {"59.0", "29.9213", "0.0023769", "661.5", "1.0000000", "1.0000000", "1.0000000"}},
      {"scientific format", {0, false, false, 0, 1013.25, false, true},
       {"15.0", "1.0133E+3", "1.2250E+0", "1225.1", "1.0000E+0", "1.0000E+0", "1.0000E+0"}},
      // 1000 hPa at sea level: pressure and density follow, temperature and sound do not.
      {"MSLP 1000 hPa", {0, false, false, 0, 1000, false, false},
       {"15.0", "1000.000", "1.208980", "1225.1", "1.0000000", "0.9869233", "0.9869233"}},
      // ISA+10: temperature, theta, sigma, density and sound change; pressure and delta do not.
      {"ISA+10", {0, false, false, 10, 1013.25, false, false},
       {"25.0", "1013.250", "1.183912", "1246.1", "1.0347041", "1.0000000", "0.9664598"}},
      // 36089 ft geometric is 10981 m geopotential: still below the tropopause.
      {"36089 ft geometric", {36089, true, false, 0, 1013.25, false, false},
       {"-56.4", "227.002", "0.364805", "1062.6", "0.7522956", "0.2240338", "0.2978002"}},
  };
  for (const Row& r : rows) EXPECT_EQ(Texts(ComputeAtmosphereData(r.in)), r.texts) << r.what;
}

TEST(AtmosphereData, RangesAndScrollTexts) {
  struct Row { bool feet, geopotential; double min, max; };
  const Row rows[] = {{false, false, -500, 85999}, {false, true, -500, 84852},
                      {true, false, -1500, 282150}, {true, true, -1500, 278385}};
  for (const Row& r : rows) {
    const InputRange range = AtmosphereAltitudeRange(r.feet, r.geopotential);
    EXPECT_EQ(range.min, r.min);
    EXPECT_EQ(range.max, r.max);
    // The top of every range stays inside the model (84852 m geopotential).
    const double topM = r.feet ? r.max * 0.3048 : r.max;
    EXPECT_LE(r.geopotential ? topM : GeometricToGeopotential(topM), 84852.0);
  }
  EXPECT_EQ(MslpScrollText(0, true), "Std");
  EXPECT_EQ(MslpScrollText(-13, false), "1000");
  EXPECT_EQ(MslpScrollText(-10, true), "29.82");
  EXPECT_DOUBLE_EQ(MslpHpaFromScroll(0, false), 1013.25);  // 0 is standard, not 1013
  EXPECT_DOUBLE_EQ(MslpHpaFromScroll(0, true), 1013.25);   // nor 29.92 inHg
  EXPECT_DOUBLE_EQ(MslpHpaFromScroll(-143, false), 870);
  EXPECT_EQ(MslpScrollRange(true).max, 209);  // 32.01 inHg
}

TEST(SpeedCalculation, ResultTexts) {
  struct Row {
    const char* what;
    SpeedCalculationInput in;
    const char *cas, *tas, *mach, *eas, *tat, *q;
  };
  const Row rows[] = {
      {"FL0 CAS 250", {0, SpeedInput::CAS, 250, 0, false}, "250", "250", "0.378", "250", "23.2", "10131"},
      // EAS is M a0 sqrt(sigma) as the screen defines it (with the sea-level sound speed).
      {"FL350 M0.80", {350, SpeedInput::Mach, 0.80, 0, false}, "272", "461", "0.800", "295", "-26.3", "10681"},
      {"FL350 TAS 461.135", {350, SpeedInput::TAS, 461.135, 0, false}, "272", "461", "0.800", "295", "-26.3", "10681"},
      {"FL500 M2.0, supersonic", {500, SpeedInput::Mach, 2.0, 0, false}, "532", "1147", "2.000", "NA", "116.8", "32472"},
      {"CAS 0", {350, SpeedInput::CAS, 0, 0, false}, "0", "0", "0.000", "0", "-54.3", "0"},
      {"US units", {0, SpeedInput::CAS, 250, 0, true}, "250", "250", "0.378", "250", "73.8", "211.6"},
      // ISA+15: same pressure and Mach for the CAS, warmer air, higher TAS and TAT, lower density.
      {"FL100 CAS 250 ISA+15", {100, SpeedInput::CAS, 250, 15, false}, "250", "297", "0.452", "250", "21.8", "9977"},
  };
  for (const Row& r : rows) {
    const SpeedCalculationResult s = ComputeSpeeds(r.in);
    EXPECT_EQ(s.cas.text, r.cas) << r.what;
    EXPECT_EQ(s.tas.text, r.tas) << r.what;
    EXPECT_EQ(s.mach.text, r.mach) << r.what;
    EXPECT_EQ(s.eas.text, r.eas) << r.what;
    EXPECT_EQ(s.tat.text, r.tat) << r.what;
    EXPECT_EQ(s.q.text, r.q) << r.what;
  }
  // The input quantity's field is the entered value itself.
  EXPECT_EQ(ComputeSpeeds({350, SpeedInput::CAS, 272.4, 0, false}).cas.value, 272.4);
}

TEST(ChangeoverLevel, ResultTexts) {
  struct Row { double ias, mach; const char *alt, *fl, *error; };
  const Row rows[] = {
      {300, 0.78, "29314", "293", ""},   {250, 0.50, "15351", "154", ""},
      {250, 0.78, "37426", "374", ""},   {400, 0.50, "NA", "NA", "No calculable changeover level"},
      {50, 3.00, ">65000", ">650", ""},  {1500, 3.00, "15554", "156", ""},
  };
  for (const Row& r : rows) {
    const ChangeoverResult c = ComputeChangeover(r.ias, r.mach);
    EXPECT_EQ(c.altitude.text, r.alt) << r.ias << " " << r.mach;
    EXPECT_EQ(c.flightLevel.text, r.fl) << r.ias << " " << r.mach;
    EXPECT_EQ(c.error, r.error) << r.ias << " " << r.mach;
  }
}

// Saturation vapour pressure over water, Smithsonian Meteorological Tables (hPa).
TEST(DensityAltitude, SaturationVapourPressureMatchesMeteorologicalTables) {
  struct Row { double t, es; };
  const Row rows[] = {{-40, 0.1891}, {-30, 0.5088}, {-20, 1.2540}, {-10, 2.8627}, {0, 6.1078},
                      {10, 12.272},  {20, 23.373},  {30, 42.430},  {40, 73.777},  {50, 123.40}};
  for (const Row& r : rows) EXPECT_NEAR(SaturationVapourPressure(r.t) / r.es, 1, 5e-4) << r.t;
}

TEST(DensityAltitude, ResultTexts) {
  struct Row {
    const char* what;
    DensityAltitudeInput in;
    const char *pressure, *humidity, *da;
  };
  const Row rows[] = {
      {"saturated", {1013.25, 15, 15, 0, false}, nullptr, "100%", "218"},
      {"20 C, dew point 10 C", {1013.25, 20, 10, 0, false}, nullptr, "53%", "743"},
      {"30 C, dew point 20 C", {1013.25, 30, 20, 0, false}, nullptr, "55%", "2020"},
      {"5000 ft, 30 C, dry", {1013.25, 30, -75, 5000, false}, "843.1", "0%", "7802"},
      {"US units", {29.92, 86, 50, 5000, true}, "24.896", "29%", "7982"},
      {"dew point above temperature", {1013.25, 20, 25, 0, false}, nullptr, "100%", "885"},
  };
  for (const Row& r : rows) {
    const DensityAltitudeResult d = ComputeDensityAltitude(r.in);
    if (r.pressure) {
      EXPECT_EQ(d.pressure.text, r.pressure) << r.what;
    }
    EXPECT_EQ(d.humidity.text, r.humidity) << r.what;
    EXPECT_EQ(d.densityAltitude.text, r.da) << r.what;
  }
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
