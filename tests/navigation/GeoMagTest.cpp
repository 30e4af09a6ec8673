// Magnetic variation against NOAA's published test values (WMM2005 at 2006.0; WMM2025 in 2025-2030,
// full-precision components) and IGRF-14 against GeographicLib's spherical-harmonic sum.
#include "navigation/GeoMag.hpp"

#include <GeographicLib/Geocentric.hpp>
#include <GeographicLib/SphericalHarmonic1.hpp>

#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/Angles.hpp"
#include "support/Golden.hpp"

using namespace norvane;

namespace {

// The numbers of a published table in data/.
std::vector<std::vector<double>> ReadTable(const std::string& name) {
  std::vector<std::vector<double>> rows;
  for (const test::GoldenRow& g : test::ReadGolden("navigation/data/" + name)) {
    rows.emplace_back();
    for (size_t i = 0; i < g.fields.size(); ++i) rows.back().push_back(g.Num(i));
  }
  return rows;
}

double Declination(const MagneticVector& b) { return std::atan2(b.y, b.x) * 180 / M_PI; }

}  // namespace

TEST(GeoMag, ReproducesPublishedWMM2005TestValues) {
  // NGDC's 2006.0 table, printed from a degrees-and-whole-minutes output as decimal degrees to
  // 0.01: the computed value rounded the same way must match to 0.01 degree, and the unrounded
  // value lies within the table's own 0.0134 degree.
  const auto rows = ReadTable("WMM2005_2006_declination.txt");
  ASSERT_EQ(rows.size(), 30u);
  for (const auto& r : rows) {
    const double lat = r[2], lon = r[3], published = r[4];
    const double d = ComputeMagVar(lat * kDegToRad, lon * kDegToRad, r[1], {2006, 1, 1}, MagModel::WMM2005);
    const double asPrinted = std::copysign(std::round(std::fabs(d) * 60) / 60, d);
    EXPECT_NEAR(asPrinted, published, 0.005 + 1e-9) << lat << " " << lon << " computed " << d;
    EXPECT_NEAR(d, published, 0.0134) << lat << " " << lon;
  }
}

TEST(GeoMag, SynthesisReproducesWMM2025TestValues) {
  // NOAA's 100-point table gives the components to 1e-6 nT: the compiled table, its secular
  // variation to degree 12 and the synthesis must agree far below the model's own error.
  const auto rows = ReadTable("WMM2025_TEST_VALUES.txt");
  ASSERT_EQ(rows.size(), 100u);
  for (const auto& r : rows) {
    const MagneticVector b = ModelField(MagModel::WMM2025, r[2] * kDegToRad, r[3] * kDegToRad, r[1], r[0] - 2025);
    SCOPED_TRACE(testing::Message() << r[0] << " " << r[1] << " " << r[2] << " " << r[3]);
    EXPECT_NEAR(b.x, r[7], 1e-3);
    EXPECT_NEAR(b.y, r[8], 1e-3);
    EXPECT_NEAR(b.z, r[9], 1e-3);
    EXPECT_NEAR(Declination(b), r[4], 0.005 + 1e-9);
    if (r[0] == 2025) {
      EXPECT_NEAR(ComputeMagVar(r[2] * kDegToRad, r[3] * kDegToRad, r[1], {2025, 1, 1}, MagModel::WMM2025), r[4],
                  0.005 + 1e-9);
    }
  }
  // The 12-point table of the report, components to 0.1 nT, at 0 and 100 km.
  for (const auto& r : ReadTable("WMM2025_testvalues_pdf.txt")) {
    const MagneticVector b = ModelField(MagModel::WMM2025, r[2] * kDegToRad, r[3] * kDegToRad, r[1], r[0] - 2025);
    SCOPED_TRACE(testing::Message() << r[0] << " " << r[1] << " " << r[2] << " " << r[3]);
    EXPECT_NEAR(b.x, r[4], 0.05 + 1e-9);
    EXPECT_NEAR(b.y, r[5], 0.05 + 1e-9);
    EXPECT_NEAR(b.z, r[6], 0.05 + 1e-9);
    EXPECT_NEAR(Declination(b), r[10], 0.005 + 1e-9);
  }
}

TEST(GeoMag, GeodeticToGeocentricMatchesGeographicLib) {
  const GeographicLib::Geocentric& earth = GeographicLib::Geocentric::WGS84();
  for (double lat = -89.9; lat <= 89.9; lat += 0.7)
    for (double hKm : {0.0, 10.0, 19.8, 100.0}) {
      double X, Y, Z;
      earth.Forward(lat, 0, hKm * 1000, X, Y, Z);
      const double r = std::hypot(X, Z) / 1000;
      const GeocentricCoordinates g = GeodeticToGeocentric(lat * kDegToRad, hKm);
      SCOPED_TRACE(testing::Message() << lat << " " << hKm);
      // The conversion's semi-minor axis is 6356.7523142 km, 0.05 mm short of a (1 - f).
      EXPECT_NEAR(g.r, r, 1e-7);
      EXPECT_NEAR(g.sinTheta, X / 1000 / r, 1e-11);
      EXPECT_NEAR(g.cosTheta, Z / 1000 / r, 1e-11);
      const double delta = lat * kDegToRad - std::atan2(Z, X);  // geodetic minus geocentric latitude
      EXPECT_NEAR(g.sinDelta, std::sin(delta), 1e-11);
      EXPECT_NEAR(g.cosDelta, std::cos(delta), 1e-11);
    }
}

TEST(GeoMag, Igrf14AgreesWithGeographicLibAndWithWmm2025) {
  // GeographicLib's Schmidt-normalised sum of the same coefficients (packed m-major, h from m = 1)
  // on the WGS-84 geocentric frame; B = -grad V in the local east-north-up axes M.
  const GaussCoefficients c = LoadIGRF14();
  std::vector<double> v[4], M(9);
  for (int k = 0; k < 4; ++k)
    for (int m = k % 2, nmax = k < 2 ? 13 : 8; m <= nmax; ++m)
      for (int n = m; n <= nmax; ++n) v[k].push_back((k == 0 ? c.g : k == 1 ? c.h : k == 2 ? c.gdot : c.hdot)[n][m]);
  const GeographicLib::SphericalHarmonic1 igrf(v[0], v[1], 13, v[2], v[3], 8, 6371.2,
                                               GeographicLib::SphericalHarmonic1::SCHMIDT);
  const CalendarDate date{2026, 7, 1};  // 546 days after the epoch
  double maxRef = 0, maxWmm = 0, x, y, z, bx, by, bz;
  for (int lat = -85; lat <= 85; lat += 10)
    for (int lon = -180; lon < 180; lon += 15) {
      GeographicLib::Geocentric(6378.137, 1 / 298.257223563).Forward(lat, lon, 0, x, y, z, M);
      igrf(546 / 365.25, x, y, z, bx, by, bz);
      const double ref =
          std::atan2(-(M[0] * bx + M[3] * by + M[6] * bz), -(M[1] * bx + M[4] * by + M[7] * bz)) * kRadToDeg;
      const double d = ComputeMagVar(lat * kDegToRad, lon * kDegToRad, 0, date, MagModel::IGRF14);
      const double w = ComputeMagVar(lat * kDegToRad, lon * kDegToRad, 0, date, MagModel::WMM2025);
      maxRef = std::max(maxRef, std::fabs(std::remainder(d - ref, 360.0)));
      if (std::abs(lat) <= 60) maxWmm = std::max(maxWmm, std::fabs(std::remainder(d - w, 360.0)));
    }
  EXPECT_LT(maxRef, 0.001);
  EXPECT_LT(maxWmm, 0.2);
  std::printf("IGRF-14 mid-2026: vs GeographicLib %.2g deg; vs WMM2025 (|lat| <= 60) %.3f deg\n", maxRef, maxWmm);
}

TEST(GeoMag, ValidityNoticeAndDateRules) {
  const auto date = [](const test::GoldenRow& r, size_t i) {
    return CalendarDate{int(r.Num(i)), int(r.Num(i + 1)), int(r.Num(i + 2))};
  };
  for (const test::GoldenRow& r : test::ReadGolden("navigation/data/magnetic.txt", "notice"))
    EXPECT_EQ(MagValidityNotice(MagModel(r.Num(0)), date(r, 1)), r[4]) << r.where;
  for (const test::GoldenRow& r : test::ReadGolden("navigation/data/magnetic.txt", "days"))
    EXPECT_EQ(DaysSince2005(date(r, 0)), r.Num(3)) << r.where;

  // Before the epoch the epoch coefficients are used, whatever the date.
  const double lat = 48 * kDegToRad, lon = 11 * kDegToRad;
  for (MagModel wmm : {MagModel::WMM2005, MagModel::IGRF10}) {
    const double epoch = ComputeMagVar(lat, lon, 0, {2005, 1, 1}, wmm);
    EXPECT_EQ(ComputeMagVar(lat, lon, 0, {2004, 12, 31}, wmm), epoch);
    EXPECT_EQ(ComputeMagVar(lat, lon, 0, {1990, 6, 15}, wmm), epoch);
    EXPECT_NE(ComputeMagVar(lat, lon, 0, {2005, 1, 2}, wmm), epoch);
    // Repeated calls give the same value: the secular variation does not accumulate.
    const double d2008 = ComputeMagVar(lat, lon, 0, {2008, 1, 1}, wmm);
    EXPECT_EQ(ComputeMagVar(lat, lon, 0, {2008, 1, 1}, wmm), d2008);
    // Central Europe drifted east by about 0.1 degree a year in 2005-2010.
    EXPECT_NEAR((d2008 - epoch) / 3, 0.11, 0.05) << MagModelName(wmm);
  }
  EXPECT_EQ(ComputeMagVar(lat, lon, 0, {2020, 1, 1}, MagModel::IGRF14),
            ComputeMagVar(lat, lon, 0, {2025, 1, 1}, MagModel::IGRF14));
}

TEST(GeoMag, IgrfAndWmmAgreeAwayFromThePoles) {
  // Two independent fits of the 2005 field: a wrong row in either table shows up as degrees.
  double maxDiff = 0;
  for (int lat = -60; lat <= 60; lat += 10)
    for (int lon = -180; lon < 180; lon += 15) {
      const double w = ComputeMagVar(lat * kDegToRad, lon * kDegToRad, 0, {2007, 7, 1}, MagModel::WMM2005);
      const double i = ComputeMagVar(lat * kDegToRad, lon * kDegToRad, 0, {2007, 7, 1}, MagModel::IGRF10);
      maxDiff = std::max(maxDiff, std::fabs(std::remainder(w - i, 360.0)));
    }
  EXPECT_LT(maxDiff, 0.5);
  std::printf("IGRF-10 vs WMM2005, |lat| <= 60, mid-2007: max difference %.3f deg\n", maxDiff);
}

TEST(GeoMag, NearThePoleAndAltitude) {
  // The screens stop at 89 degrees 59 minutes; the east component divides by sin(theta).
  const double nearPole = (89 + 59 / 60.0) * kDegToRad;
  for (double lon : {-120.0, 0.0, 75.0}) {
    EXPECT_TRUE(std::isfinite(ComputeMagVar(nearPole, lon * kDegToRad, 0, {2006, 1, 1}, MagModel::WMM2005)));
    EXPECT_TRUE(std::isfinite(ComputeMagVar(-nearPole, lon * kDegToRad, 19.8, {2006, 1, 1}, MagModel::IGRF10)));
  }
  // The tracks screen takes latitudes beyond 89.98 degrees at 89 degrees 59 minutes.
  EXPECT_NEAR(TrackMagVar(90, 30, 2007, MagModel::WMM2005),
              ComputeMagVar(nearPole, 30 * kDegToRad, 0, {2007, 1, 1}, MagModel::WMM2005), 1e-6);
  EXPECT_NEAR(TrackMagVar(-89.99, 30, 2007, MagModel::IGRF10),
              ComputeMagVar(-nearPole, 30 * kDegToRad, 0, {2007, 1, 1}, MagModel::IGRF10), 1e-6);
  EXPECT_EQ(TrackMagVar(89.97, 30, 2007, MagModel::IGRF10),
            ComputeMagVar(89.97 * kDegToRad, 30 * kDegToRad, 0, {2007, 1, 1}, MagModel::IGRF10));
  // Altitude changes the variation only slowly (Boulder, 0 vs 19.8 km = 65000 ft).
  const double d0 = ComputeMagVar(40 * kDegToRad, -105 * kDegToRad, 0, {2006, 1, 1}, MagModel::WMM2005);
  const double d20 = ComputeMagVar(40 * kDegToRad, -105 * kDegToRad, 19.812, {2006, 1, 1}, MagModel::WMM2005);
  EXPECT_NE(d0, d20);
  EXPECT_NEAR(d0, d20, 0.2);
}

TEST(GeoMag, VariationText) {
  for (const test::GoldenRow& r : test::ReadGolden("navigation/data/magnetic.txt", "text"))
    EXPECT_EQ(MagVarText(r.Num(0)), r[1]) << r.where;
}
