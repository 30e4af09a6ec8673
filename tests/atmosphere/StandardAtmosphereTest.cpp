#include "atmosphere/StandardAtmosphere.hpp"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

using namespace norvane;

TEST(StandardAtmosphere, LayerOfAltitude) {
  struct Row { double H; int layer; };
  const Row rows[] = {{-500, 0},   {10999.99, 0}, {11000, 1}, {20000, 2}, {32000, 3}, {46999, 3},
                      {47000, 4}, {51000, 5},    {71000, 6}, {84851.9, 6}, {84852, 7}, {1e9, 7}};
  for (const Row& r : rows) EXPECT_EQ(GetAtmosphereLayer(r.H), r.layer) << r.H;
}

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

// US Standard Atmosphere 1976, Table I (geometric altitude): T (K), p (Pa), rho (kg/m3), as
// published to 6 and 5 significant digits.
TEST(StandardAtmosphere, MatchesUsStandardAtmosphere1976Table) {
  struct Row { double z, T, p, rho; };
  const Row rows[] = {
      {0, 288.150, 1.01325e5, 1.2250},     {1000, 281.651, 8.9876e4, 1.1117},
      {2000, 275.154, 7.9501e4, 1.0066},   {5000, 255.676, 5.4048e4, 7.3643e-1},
      {10000, 223.252, 2.6500e4, 4.1351e-1}, {15000, 216.650, 1.2111e4, 1.9476e-1},
      {20000, 216.650, 5.5293e3, 8.8910e-2}, {25000, 221.552, 2.5492e3, 4.0084e-2},
      {30000, 226.509, 1.1970e3, 1.8410e-2}, {40000, 250.350, 2.8714e2, 3.9957e-3},
      {50000, 270.650, 7.9779e1, 1.0269e-3}, {60000, 247.021, 2.1959e1, 3.0968e-4},
      {70000, 219.585, 5.2209e0, 8.2829e-5}, {80000, 198.639, 1.0524e0, 1.8458e-5},
  };
  for (const Row& r : rows) {
    const double H = GeometricToGeopotential(r.z);
    int16_t layer = kLayerUnknown;
    const double T = GetStdTemperature(H, layer) + 273.15;
    const double delta = GetPressureRatio(H, layer);
    EXPECT_NEAR(T, r.T, 6e-4) << r.z;
    EXPECT_NEAR(delta * 101325 / r.p, 1, 1.5e-4) << r.z;
    EXPECT_NEAR(delta / (T / 288.15) * kRho0 / r.rho, 1, 1.5e-4) << r.z;
  }
}

// ICAO Doc 7488 in feet (pressure altitude): temperature (C) and pressure (hPa).
TEST(StandardAtmosphere, MatchesIcaoTableInFeet) {
  struct Row { double ft, t, hPa; };
  const Row rows[] = {{5000, 5.1, 843.1},   {10000, -4.8, 696.8}, {20000, -24.6, 465.6},
                      {30000, -44.4, 300.9}, {35000, -54.3, 238.4}, {36089, -56.5, 226.3},
                      {40000, -56.5, 187.5}, {45000, -56.5, 147.5}};
  for (const Row& r : rows) {
    const double H = r.ft * 0.3048;
    EXPECT_NEAR(GetStdTemperature(H), r.t, 0.05) << r.ft;
    EXPECT_NEAR(GetPressureRatio(H) * 1013.25, r.hPa, 0.05) << r.ft;
  }
}

TEST(StandardAtmosphere, GeometricAndGeopotentialAltitude) {
  // US 1976: 86 km geometric is 84.852 km geopotential.
  EXPECT_NEAR(GeometricToGeopotential(86000), 84852, 0.05);
  for (double z : {-500.0, 0.0, 1.0, 1524.0, 11000.0, 47000.0, 85999.0})
    EXPECT_NEAR(GeopotentialToGeometric(GeometricToGeopotential(z)), z, 1e-9 * (1 + std::fabs(z))) << z;
}

// Pitot-to-static ratio p0/p = 1 + qc/p: isentropic flow below Mach 1, normal shock (Rayleigh
// pitot formula) above; NACA Report 1135 tables.
TEST(StandardAtmosphere, ImpactPressureRatioMatchesCompressibleFlowTables) {
  struct Row { double M, pitotRatio, tol; };
  const Row rows[] = {{0, 1, 0},           {0.3, 1.06443, 1e-5}, {0.5, 1.18621, 1e-5}, {0.8, 1.52434, 1e-5},
                      {1.0, 1.89293, 1e-5}, {1.5, 3.41327, 1e-5}, {2.0, 5.64044, 1e-5}, {3.0, 12.0610, 1e-4}};
  for (const Row& r : rows) EXPECT_NEAR(ImpactPressureRatio(r.M) + 1, r.pitotRatio, r.tol) << r.M;
  // The two branches meet at Mach 1.
  EXPECT_NEAR(ImpactPressureRatio(std::nextafter(1.0, 0.0)), ImpactPressureRatio(1.0), 1e-9);
}

// Reference speeds: the pitot relations evaluated independently (bisection on p0/p, ISA pressure
// by hydrostatic integration with R* = 8.31432, M = 0.0289644).
TEST(StandardAtmosphere, AirspeedConversionsAtAltitude) {
  struct MachRow { double fl, M, cas, tas; };
  const MachRow machRows[] = {{350, 0.80, 271.9281, 461.1351}, {300, 0.78, 295.5857, 459.6715},
                              {100, 0.50, 276.8260, 319.1668}, {500, 2.00, 532.1361, 1147.1388},
                              {0, 0.50, 330.7394, 330.7394}};
  for (const MachRow& r : machRows) {
    const double delta = GetPressureRatio(r.fl * 30.48);
    EXPECT_NEAR(CASFromMach(r.M, delta), r.cas, 2e-3) << r.fl;
    EXPECT_NEAR(TASFromMach(r.M, r.fl * 100, 0), r.tas, 2e-3) << r.fl;
  }
  struct CasRow { double fl, cas, M, tas; };
  const CasRow casRows[] = {{350, 250, 0.7411970, 427.2400}, {300, 300, 0.7906378, 465.9406},
                            {100, 250, 0.4522749, 288.7023}, {0, 250, 0.3779410, 250.0000},
                            {200, 800, 1.6764288, 1029.8587}};
  for (const CasRow& r : casRows) {
    EXPECT_NEAR(MachFromCAS(r.cas, GetPressureRatio(r.fl * 30.48)), r.M, 1e-7) << r.fl;
    EXPECT_NEAR(TASFromCAS(r.cas, r.fl * 100, 0), r.tas, 1e-3) << r.fl;
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
  struct Row { double cas, M, ft, tol; };
  const Row rows[] = {
      {300, 0.78, 29314.13, 0.05},   // independent bisection on ISA pressure
      {250, 0.50, 15351.13, 0.05},
      {250, 0.78, 37426.45, 0.05},   // above the tropopause, isothermal branch
      {280, 0.82, 34919.68, 0.05},
      {400, 0.50, kChangeoverNone, 0},  // Mach 0.5 reached below sea level
      {0, 0.78, kChangeoverNone, 0},    {250, 0, kChangeoverNone, 0},
      {50, 3.00, kChangeoverAbove, 0},  // above 20000 m
      {kA0Kt, 1.0, 0, 1e-6},             // CAS = a0 is Mach 1 at sea level
  };
  for (const Row& r : rows) EXPECT_NEAR(ChangeoverAltitudeFt(r.cas, r.M), r.ft, r.tol) << r.cas << " " << r.M;
  EXPECT_EQ(ChangeoverAltitudeFt(std::nan(""), 0.8), 0);
}
