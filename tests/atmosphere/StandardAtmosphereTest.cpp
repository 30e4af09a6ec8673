#include "atmosphere/StandardAtmosphere.hpp"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "support/Golden.hpp"

using namespace norvane;

TEST(StandardAtmosphere, LayerArgumentIsResolvedAndWrittenBack) {
  int16_t layer = kLayerUnknown;
  GetPressureRatio(11000, layer);
  EXPECT_EQ(layer, 1);
  // A layer the caller states is used unchecked (troposphere gradient continued).
  int16_t troposphere = 0;
  EXPECT_NEAR(GetStdTemperature(12000, troposphere), 288.15 - 0.0065 * 12000 - 273.15, 1e-12);
  // A garbage layer value never indexes past the tables: it is resolved like -1.
  for (int16_t bad : {int16_t(-2), int16_t(8), int16_t(-32768), int16_t(32767)}) {
    int16_t l = bad;
    EXPECT_DOUBLE_EQ(GetStdTemperature(25000, l), 216.65 + 0.001 * 5000 - 273.15) << bad;
    EXPECT_EQ(l, 2) << bad;
  }
}

// Layer 7 has no coefficients: at and above the model top the values of the top are returned
// (US Standard Atmosphere 1976 at 84852 m geopotential: 186.946 K, 0.37338 Pa).
TEST(StandardAtmosphere, ModelTopIsHeldAboveTheTables) {
  const double kTopC = 186.946 - 273.15;
  const double kTopDelta = 0.37338 / 101325;
  for (double H : {84852.0, 84852.5, 90000.0, 1e7, std::numeric_limits<double>::infinity()}) {
    int16_t layer = kLayerUnknown;
    EXPECT_NEAR(GetStdTemperature(H, layer), kTopC, 1e-9) << H;
    EXPECT_EQ(layer, 7);
    EXPECT_NEAR(GetPressureRatio(H, layer) / kTopDelta, 1, 2e-5) << H;
  }
  // A NaN altitude compares false against every base and lands on the top, not past the tables.
  EXPECT_EQ(GetAtmosphereLayer(std::nan("")), 7);
}

namespace {
std::vector<test::GoldenRow> Rows(const char* kind) {
  return test::ReadGolden("atmosphere/data/standard-atmosphere.txt", kind);
}
}  // namespace

TEST(StandardAtmosphere, LayerOfAltitude) {
  for (const test::GoldenRow& r : Rows("layer")) EXPECT_EQ(GetAtmosphereLayer(r.Num(0)), r.Num(1)) << r.where;
}

TEST(StandardAtmosphere, MatchesPublishedTables) {
  for (const test::GoldenRow& r : Rows("us1976")) {
    const double H = GeometricToGeopotential(r.Num(0));
    int16_t layer = kLayerUnknown;
    const double T = GetStdTemperature(H, layer) + 273.15;
    const double delta = GetPressureRatio(H, layer);
    EXPECT_NEAR(T, r.Num(1), 6e-4) << r.where;
    EXPECT_NEAR(delta * 101325 / r.Num(2), 1, 1.5e-4) << r.where;
    EXPECT_NEAR(delta / (T / 288.15) * kRho0 / r.Num(3), 1, 1.5e-4) << r.where;
  }
  for (const test::GoldenRow& r : Rows("icao-ft")) {
    const double H = r.Num(0) * 0.3048;
    EXPECT_NEAR(GetStdTemperature(H), r.Num(1), 0.05) << r.where;
    EXPECT_NEAR(GetPressureRatio(H) * 1013.25, r.Num(2), 0.05) << r.where;
  }
}

TEST(StandardAtmosphere, GeometricAndGeopotentialAltitude) {
  // US 1976: 86 km geometric is 84.852 km geopotential.
  EXPECT_NEAR(GeometricToGeopotential(86000), 84852, 0.05);
  for (double z : {-500.0, 0.0, 1.0, 1524.0, 11000.0, 47000.0, 85999.0})
    EXPECT_NEAR(GeopotentialToGeometric(GeometricToGeopotential(z)), z, 1e-9 * (1 + std::fabs(z))) << z;
}

TEST(StandardAtmosphere, ImpactPressureAndAirspeeds) {
  for (const test::GoldenRow& r : Rows("pitot"))
    EXPECT_NEAR(ImpactPressureRatio(r.Num(0)) + 1, r.Num(1), r.Num(2)) << r.where;
  // The two branches meet at Mach 1.
  EXPECT_NEAR(ImpactPressureRatio(std::nextafter(1.0, 0.0)), ImpactPressureRatio(1.0), 1e-9);
  for (const test::GoldenRow& r : Rows("mach")) {
    EXPECT_NEAR(CASFromMach(r.Num(1), GetPressureRatio(r.Num(0) * 30.48)), r.Num(2), 2e-3) << r.where;
    EXPECT_NEAR(TASFromMach(r.Num(1), r.Num(0) * 100, 0), r.Num(3), 2e-3) << r.where;
  }
  for (const test::GoldenRow& r : Rows("cas")) {
    EXPECT_NEAR(MachFromCAS(r.Num(1), GetPressureRatio(r.Num(0) * 30.48)), r.Num(2), 1e-7) << r.where;
    EXPECT_NEAR(TASFromCAS(r.Num(1), r.Num(0) * 100, 0), r.Num(3), 1e-3) << r.where;
  }
  // A warmer atmosphere keeps Mach and raises TAS with the speed of sound, sqrt(T).
  const double T350 = GetStdTemperature(350 * 30.48) + 273.15;
  EXPECT_NEAR(TASFromCAS(250, 35000, 20) / TASFromCAS(250, 35000, 0), std::sqrt((T350 + 20) / T350), 1e-12);
}

TEST(StandardAtmosphere, SupersonicIterationAlwaysEnds) {
  EXPECT_NEAR(MachFromCAS(kA0Kt, 1), 1, 1e-8);  // CAS = a0 at sea level is Mach 1
  // Round trips through the Rayleigh branch (CAS up to 1500 kt, up to FL 650).
  for (double M : {0.2, 0.95, 1.0, 1.3, 2.0, 3.0})
    for (double fl : {0.0, 150.0, 350.0, 650.0}) {
      const double delta = GetPressureRatio(fl * 30.48);
      EXPECT_NEAR(MachFromCAS(CASFromMach(M, delta), delta), M, 1e-5) << M << " FL" << fl;
    }
  // Inputs no screen can produce still return (the guard caps the rounds).
  EXPECT_TRUE(std::isnan(MachFromCAS(std::nan(""), 1)));
  EXPECT_GT(MachFromCAS(1e6, 1e-9), 1e3);
}

TEST(StandardAtmosphere, OneMinusExpKeepsPrecision) {
  for (double x : {-0.01, 1e-12, 0.01, 0.5}) EXPECT_NEAR(OneMinusExp(x) / -std::expm1(x), 1, 1e-13) << x;
}

TEST(StandardAtmosphere, PressureAndDensityAltitudeInvertTheModel) {
  EXPECT_EQ(PressureAltitudeFt(1), 0);
  EXPECT_EQ(DensityAltitudeM(1), 0);
  for (double H : {-500.0, 0.0, 150.0, 3000.0, 10999.0, 11000.0, 15000.0, 20000.0}) {
    int16_t layer = kLayerUnknown;
    const double delta = GetPressureRatio(H, layer);
    const double sigma = delta / ((GetStdTemperature(H, layer) + 273.15) / 288.15);
    EXPECT_NEAR(PressureAltitudeFt(delta), H / 0.3048, 1e-6) << H;
    EXPECT_NEAR(DensityAltitudeM(sigma), H, 1e-6) << H;
  }
}

TEST(StandardAtmosphere, ChangeoverAltitude) {
  for (const test::GoldenRow& r : Rows("changeover")) {
    const double ft = r[2] == "none" ? kChangeoverNone : r[2] == "above" ? kChangeoverAbove : r.Num(2);
    EXPECT_NEAR(ChangeoverAltitudeFt(r.Num(0), r.Num(1)), ft, r.Num(3)) << r.where;
  }
  EXPECT_NEAR(ChangeoverAltitudeFt(kA0Kt, 1.0), 0, 1e-6);  // CAS = a0 is Mach 1 at sea level
  EXPECT_EQ(ChangeoverAltitudeFt(std::nan(""), 0.8), 0);
}
