// Special cases of the inverse and direct procedures and the coordinate texts. Expected values
// are the calculator's documented behaviour or closed forms on the sphere; the bulk accuracy
// against an independent library is in GeodesyReferenceTest.cpp.
#include "navigation/Geodesy.hpp"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

using namespace norvane;

namespace {
constexpr double U = kUndefined;

struct InverseRow {
  const char* what;
  double lat1, lat2, lon1, lon2;
  double dist, ini, fin;  // NM, degrees; U where undefined
  double tol;             // on the distance and tracks
};

void ExpectInverse(const InverseRow& r, const InverseResult& got) {
  SCOPED_TRACE(r.what);
  const auto check = [&](double want, double have, const char* name) {
    if (want == U) EXPECT_EQ(have, U) << name;
    else EXPECT_NEAR(have, want, r.tol) << name;
  };
  check(r.dist, got.distance, "distance");
  check(r.ini, got.trackIni, "initial track");
  check(r.fin, got.trackFin, "final track");
}
}  // namespace

TEST(GreatCircleSphere, EntryTestsAndSpecialCases) {
  const InverseRow rows[] = {
      {"identical points", 45, 45, 10, 10, 0, U, U, 0},
      {"same north pole, different longitudes", 90, 90, 0, 100, 0, U, U, 0},
      {"due north along a meridian reports 360, not 0", 0, 10, 5, 5, 600, 360, 360, 1e-12},
      {"due south", 10, 0, 5, 5, 600, 180, 180, 1e-12},
      {"from the north pole", 90, 80, 0, 50, 600, 180, 180, 1e-12},
      {"to the north pole from another longitude", 80, 90, 0, 50, 600, 360, 360, 1e-12},
      {"exact antipodes: 10800 NM, no track", 10, -10, 0, 180, 10800, U, U, 0},
      {"quarter of the equator", 0, 0, 0, 90, 5400, 90, 90, 1e-9},
      // The quadrant rule uses only the latitude order: past the vertex the final track is
      // mirrored (the geometric azimuth is 91.75).
      {"vertex between the points", 0, 10, 0, 100, 5990.7931, 79.8489, 88.2462, 1e-4},
      {"southbound across the date line", 10, -20, 170, -170, 2152.9778, 146.7474, 144.9244, 1e-4},
      // Southbound by latitude, so the initial track is mirrored too: the azimuth is 352.36.
      {"beyond 135 degrees of longitude (atan2 form)", 50, 40, -170, 20, 5374.2829, 187.6445, 186.4088, 1e-4},
  };
  for (const auto& r : rows) ExpectInverse(r, GreatCircleSphere(r.lat1, r.lat2, r.lon1, r.lon2));
}

TEST(GreatCircleSphere, DistanceIsArcInMinutes) {
  // 1 degree along the equator and along a meridian is 60 NM; a tiny step keeps 1 NM per minute.
  EXPECT_NEAR(GreatCircleSphere(0, 0, 0, 1).distance, 60, 1e-12);
  EXPECT_NEAR(GreatCircleSphere(0, 0, 0, 1.0 / 60 / 3600).distance, 1.0 / 3600, 1e-15);
  // Points so close that the haversine underflows: distance 0, no track, never NaN.
  const InverseResult tiny = GreatCircleSphere(0, 0, 0, 1e-300);
  EXPECT_EQ(tiny.distance, 0);
  EXPECT_EQ(tiny.trackIni, U);
}

TEST(GeodesicWGS84, EntryTestsAndSpecialCases) {
  const InverseRow rows[] = {
      {"identical points", 45, 45, 10, 10, 0, U, U, 0},
      {"same pole", -90, -90, 0, 100, 0, U, U, 0},
      // No meridian shortcut: northbound is 0 here. Meridian arc 0-10 N: 1105854.833 m.
      {"due north along a meridian reports 0", 0, 10, 5, 5, 1105854.833 / 1852, 0, 0, 1e-6},
      {"due south", 10, 0, 5, 5, 1105854.833 / 1852, 180, 180, 1e-6},
      // Equatorial line: cos^2(alpha) = 0, the guarded division; length a * dlon.
      {"along the equator", 0, 0, 0, 1, 6378.137 * kPi / 180 / 1.852, 90, 90, 1e-9},
      // b = 6356.7523142 km is 0.05 mm short of a (1 - f): 7e-12 relative.
      {"along the equator westbound", 0, 0, 10, -20, 30 * 6378.137 * kPi / 180 / 1.852, 270, 270, 1e-7},
      // Vincenty's classic failure: nearly antipodal, lambda oscillates for 20 rounds.
      {"nearly antipodal, no convergence", 0, 0.5, 0, 179.7, U, U, U, 0},
  };
  for (const auto& r : rows) ExpectInverse(r, GeodesicWGS84(r.lat1, r.lat2, r.lon1, r.lon2));
}

TEST(RhumbLine, EntryTestsParallelsAndLongitudeRule) {
  const double c40 = std::cos(40 * kDegToRad);
  const InverseRow rows[] = {
      {"identical points", 12, 12, 34, 34, 0, U, U, 0},
      {"same pole", 90, 90, 10, 20, 0, U, U, 0},
      {"due north along a meridian reports 360", 0, 10, 5, 5, 600, 360, U, 1e-12},
      {"due south", 10, 0, 5, 5, 600, 180, U, 1e-12},
      {"from the north pole", 90, 80, 0, 50, 600, 180, U, 1e-12},
      {"parallel eastbound", 40, 40, 10, 30, 20 * c40 * 60, 90, U, 1e-9},
      {"parallel westbound", 40, 40, 30, 10, 20 * c40 * 60, 270, U, 1e-9},
      // On a parallel the longitude difference is taken the short way round.
      {"parallel, 200 degrees east is 160 west", 40, 40, -100, 100, 160 * c40 * 60, 270, U, 1e-9},
      {"parallel across 180 eastbound", 40, 40, 170, -170, 20 * c40 * 60, 90, U, 1e-9},
      {"parallel, exactly 180 apart, goes west", 0, 0, 0, 180, 10800, 270, U, 1e-9},
      // Off a parallel the longitude difference is used as given: the long way round.
      {"40 N 170 E to 45 N 170 W goes the long way", 40, 45, 170, -170, 15031, 271.1, U, 0.5},
      {"equator to 1 degree NE (closed form)", 0, 1, 0, 1, 84.85066, 44.99855, U, 1e-5},
  };
  for (const auto& r : rows) {
    const RhumbResult got = RhumbLine(r.lat1, r.lat2, r.lon1, r.lon2);
    ExpectInverse(r, {got.distance, got.track, U});
  }
}

TEST(RhumbLine, NearPoleAndSeriesFormsAreContinuous) {
  // The stretched latitude changes form at 89.9 degrees and the logarithm becomes a series when
  // the latitudes nearly coincide; both switches must not make a step in the result.
  const double below = RhumbLine(89.8, 89.8999999999, 0, 10).distance;
  const double above = RhumbLine(89.8, 89.9000000001, 0, 10).distance;
  EXPECT_NEAR(below, above, 1e-6);
  const double south1 = RhumbLine(-89.8, -89.8999999999, 0, 10).distance;
  const double south2 = RhumbLine(-89.8, -89.9000000001, 0, 10).distance;
  EXPECT_NEAR(south1, south2, 1e-6);
  // |1 - R| crosses 0.001 near a latitude difference of 0.05 degree at 10 N.
  double last = 0;
  for (double dlat = 0.0400; dlat <= 0.0700; dlat += 0.0005) {
    const RhumbResult r = RhumbLine(10, 10 + dlat, 0, 0.01);
    if (last > 0) {
      EXPECT_LT(std::fabs(r.distance - last), 0.031) << dlat;  // steps of 0.03 NM
    }
    last = r.distance;
  }
  // Within 1e-4 degree of the pole the result stays finite and close to the meridian length.
  const RhumbResult np = RhumbLine(89.9999, 89.99999, 0, 90);
  EXPECT_TRUE(std::isfinite(np.distance));
  EXPECT_GT(np.distance, 0.00009 * 60);
}

TEST(DirectSphere, TracksDistancesAndLongitudeWrap) {
  struct Row {
    const char* what;
    double lat1, lon1, track, dist, lat2, lon2, tol;
  } rows[] = {
      {"east along the equator", 0, 0, 90, 5400, 0, 90, 1e-9},
      {"north 600 NM", 10, 20, 0, 600, 20, 20, 1e-9},
      {"track 360 is track 0", 10, 20, 360, 600, 20, 20, 1e-9},
      {"over the pole", 80, 20, 0, 1200, 80, -160, 1e-9},
      {"west across 180 wraps to the east", 0, -179, 270, 120, 0, 179, 1e-9},
      {"zero distance", 45, 45, 123, 0, 45, 45, 1e-13},
      {"half the world", 30, 40, 77, 10800, -30, -140, 1e-9},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(r.what);
    const GeoPoint p = DirectSphere(r.lat1, r.lon1, r.track, r.dist);
    EXPECT_NEAR(p.lat, r.lat2, r.tol);
    EXPECT_NEAR(p.lon, r.lon2, r.tol);
  }
}

TEST(DirectWGS84, EndsForInputsThatStressTheIteration) {
  // Points that stress Vincenty's direct loop: from the poles, along the equator (cos^2 alpha =
  // 1 with sigma1 = 0), nearly a full turn, many turns, and distances so large that sigma cannot
  // be resolved to 1e-12 and only the round bound ends the loop.
  struct Row {
    double lat1, lon1, track, dist;
  } rows[] = {
      {90, 0, 0, 5400},     {-90, 0, 180, 5400},    {0, 0, 90, 10800},   {0, 0, 90, 21600},
      {0, 0, 0, 10790},     {0.1, 0, 89.9, 10799},  {45, 0, 45, 64800},  {30, 10, 33, 1e7},
      {-60, 10, 250, 1e12}, {10, 20, 45, 1e15},     {89.9999, 0, 90, 0}, {0, 0, 90, 1e-9},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(testing::Message() << r.lat1 << " " << r.lon1 << " " << r.track << " " << r.dist);
    const GeoPoint p = DirectWGS84(r.lat1, r.lon1, r.track, r.dist);
    EXPECT_TRUE(std::isfinite(p.lat) && std::isfinite(p.lon));
    EXPECT_LE(std::fabs(p.lat), 90);
    // The longitude is brought back by one turn only, enough for a few times round the earth.
    if (r.dist <= 64800) {
      EXPECT_LE(std::fabs(p.lon), 180);
    }
  }
  // Not-a-number input ends too (the comparison in the loop fails at once).
  const GeoPoint nan = DirectWGS84(10, 20, std::numeric_limits<double>::quiet_NaN(), 100);
  EXPECT_TRUE(std::isnan(nan.lat) || std::isnan(nan.lon));
  // The equatorial latitude is exactly 0, and the longitude follows a * dlon.
  const GeoPoint eq = DirectWGS84(0, 0, 90, 6378.137 * kPi / 180 / 1.852);
  EXPECT_EQ(eq.lat, 0);
  EXPECT_NEAR(eq.lon, 1, 1e-10);
  const GeoPoint west = DirectWGS84(0, -179.5, 270, 60);
  EXPECT_GT(west.lon, 179);  // wrapped into the eastern hemisphere
}

TEST(FormatSignificant, FourFiguresAtMostThreeDecimals) {
  struct Row {
    double v;
    const char* text;
  } rows[] = {
      {1234.567, "1235"}, {12.3456, "12.35"}, {0.012345, "0.012"}, {999.96, "1000.0"},
      {123456.7, "123457"}, {99.999, "100.00"}, {0.0004, "0.000"},
  };
  for (const auto& r : rows) EXPECT_EQ(FormatSignificant(r.v, 4, 3), r.text) << r.v;
  // Outside its domain it must not fail (the logarithm of 0 would make n undefined).
  EXPECT_EQ(FormatSignificant(0, 4, 3), "0");
  EXPECT_EQ(FormatSignificant(std::numeric_limits<double>::infinity(), 4, 3), "0");
}

TEST(FormatLatLong, HemispheresTruncationAndCarries) {
  struct Row {
    double v;
    bool lon;
    const char* text;
  } rows[] = {
      {45.5, false, "N45 30 00.00"},
      {-73.984, true, "W073 59 02.40"},
      {0, false, "N00 00 00.00"},  // zero counts as north
      {45.999999, false, "N46 00 00.00"},                     // seconds carry, then minutes
      {10 + 30 / 60.0 + 59.996 / 3600, false, "N10 31 00.00"},  // seconds carry into minutes
      {10 + 30 / 60.0 + 59.994 / 3600, false, "N10 30 59.99"},  // just below the carry
      {10.1, false, "N10 06 00.00"},  // 10.1 * 60 falls short of 6 minutes in binary
      {-90, false, "S90 00 00.00"},
      {-179.999999, true, "W180 00 00.00"},
      // The hemisphere is the rounded value's: what shows as zero is N or E, not "S00 00 00.00".
      {-1e-14, false, "N00 00 00.00"}, {-0.000001, true, "E000 00 00.00"}, {-0.000002, true, "W000 00 00.01"},
  };
  for (const auto& r : rows) EXPECT_EQ(FormatLatLong(r.v, r.lon), r.text) << r.v;
}

TEST(ParseCoordinate, DecimalAndHemisphereForms) {
  const double egll = 51 + 28 / 60.0 + 39 / 3600.0, nan = std::nan("");
  const std::tuple<std::string, bool, double> rows[] = {
      {"N51 28 39", 0, egll}, {"51 28 39.5N", 0, egll + 0.5 / 3600}, {"51\xC2\xB0" "28'39\"N", 0, egll}, {"N51 60", 0, nan},
      {"N51.5 30", 0, nan}, {"E51", 0, nan}, {"51 28", 0, nan}, {"+-5", 0, nan}, {"-0.4613", 1, -0.4613},
      {"W000 27 41", 1, -(27 / 60.0 + 41 / 3600.0)}, {FormatLatLong(-73.984, true), 1, -73.984}};  // reads back
  for (const auto& [text, isLon, v] : rows) {
    const auto got = ParseCoordinate(text, isLon);
    EXPECT_EQ(got.has_value(), !std::isnan(v)) << text;
    if (got) { EXPECT_NEAR(*got, v, 1e-9) << text; }
  }
}

TEST(ResultTexts, TracksAndDistances) {
  EXPECT_EQ(TrackText(U), "ND");
  EXPECT_EQ(TrackText(5.04), "005.0");
  EXPECT_EQ(TrackText(359.96), "360.0");
  EXPECT_EQ(DistanceText(U), "ND");
  EXPECT_EQ(DistanceText(0), "0");
  EXPECT_EQ(DistanceText(5990.79), "5991");
}
