// Special cases of the inverse and direct procedures and the coordinate texts, from the golden table
// data/geodesy.txt; the bulk accuracy against an independent library is in GeodesyReferenceTest.cpp.
#include "navigation/Geodesy.hpp"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "support/Golden.hpp"

using namespace norvane;
using norvane::test::GoldenRow;
using norvane::test::ReadGolden;

namespace {
constexpr double U = kUndefined;
const char* const kTable = "navigation/data/geodesy.txt";

// A golden field: "U" is undefined.
double Value(const GoldenRow& r, size_t i) { return r[i] == "U" ? U : r.Num(i); }
}  // namespace

TEST(Geodesy, InverseDirectAndTextTables) {
  for (const GoldenRow& r : ReadGolden(kTable, "inverse")) {
    SCOPED_TRACE(r.where);
    const double lat1 = r.Num(1), lat2 = r.Num(2), lon1 = r.Num(3), lon2 = r.Num(4), tol = r.Num(8);
    InverseResult got;
    if (r[0] == "rhumb") {
      const RhumbResult rl = RhumbLine(lat1, lon1, lat2, lon2);
      got = {rl.distance, rl.track, U};
    } else {
      got = r[0] == "sphere" ? GreatCircleSphere(lat1, lon1, lat2, lon2) : GeodesicWGS84(lat1, lon1, lat2, lon2);
    }
    const double have[] = {got.distance, got.trackIni, got.trackFin};
    for (size_t i = 0; i < 3; ++i) {
      if (r[5 + i] == "U")
        EXPECT_EQ(have[i], U) << i;
      else
        EXPECT_NEAR(have[i], Value(r, 5 + i), tol) << i;
    }
  }
  for (const GoldenRow& r : ReadGolden(kTable, "direct")) {
    const GeoPoint p = DirectSphere(r.Num(0), r.Num(1), r.Num(2), r.Num(3));
    EXPECT_NEAR(p.lat, r.Num(4), r.Num(6)) << r.where;
    EXPECT_NEAR(p.lon, r.Num(5), r.Num(6)) << r.where;
  }
  for (const GoldenRow& r : ReadGolden(kTable, "latlong"))
    EXPECT_EQ(FormatLatLong(r.Num(0), r[1] == "lon"), r[2]) << r.where;
  for (const GoldenRow& r : ReadGolden(kTable, "significant"))
    EXPECT_EQ(FormatSignificant(r.Num(0), 4, 3), r[1]) << r.where;
  for (const GoldenRow& r : ReadGolden(kTable, "track")) EXPECT_EQ(TrackText(Value(r, 0)), r[1]) << r.where;
  for (const GoldenRow& r : ReadGolden(kTable, "distance")) EXPECT_EQ(DistanceText(Value(r, 0)), r[1]) << r.where;
}

TEST(RhumbLine, NearPoleAndSeriesFormsAreContinuous) {
  // The stretched latitude changes form at 89.9 degrees and the logarithm becomes a series when
  // the latitudes nearly coincide; both switches must not make a step in the result.
  const double below = RhumbLine(89.8, 0, 89.8999999999, 10).distance;
  const double above = RhumbLine(89.8, 0, 89.9000000001, 10).distance;
  EXPECT_NEAR(below, above, 1e-6);
  const double south1 = RhumbLine(-89.8, 0, -89.8999999999, 10).distance;
  const double south2 = RhumbLine(-89.8, 0, -89.9000000001, 10).distance;
  EXPECT_NEAR(south1, south2, 1e-6);
  // |1 - R| crosses 0.001 near a latitude difference of 0.05 degree at 10 N.
  double last = 0;
  for (double dlat = 0.0400; dlat <= 0.0700; dlat += 0.0005) {
    const RhumbResult r = RhumbLine(10, 0, 10 + dlat, 0.01);
    if (last > 0) {
      EXPECT_LT(std::fabs(r.distance - last), 0.031) << dlat;  // steps of 0.03 NM
    }
    last = r.distance;
  }
  // Within 1e-4 degree of the pole the result stays finite and close to the meridian length.
  const RhumbResult np = RhumbLine(89.9999, 0, 89.99999, 90);
  EXPECT_TRUE(std::isfinite(np.distance));
  EXPECT_GT(np.distance, 0.00009 * 60);
}

TEST(DirectWGS84, EndsForInputsThatStressTheIteration) {
  // Points that stress Vincenty's direct loop: from the poles, along the equator (cos^2 alpha =
  // 1 with sigma1 = 0), nearly a full turn, many turns, and distances so large that sigma cannot
  // be resolved to 1e-12 and only the round bound ends the loop.
  for (const GoldenRow& r : ReadGolden(kTable, "stress")) {
    SCOPED_TRACE(r.where);
    const GeoPoint p = DirectWGS84(r.Num(0), r.Num(1), r.Num(2), r.Num(3));
    EXPECT_TRUE(std::isfinite(p.lat) && std::isfinite(p.lon));
    EXPECT_LE(std::fabs(p.lat), 90);
    // The longitude is brought back by one turn only, enough for a few times round the earth.
    if (r.Num(3) <= 64800) {
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

TEST(ParseCoordinate, DecimalAndHemisphereForms) {
  for (const GoldenRow& r : ReadGolden(kTable, "parse")) {
    const auto got = ParseCoordinate(r[0], r[1] == "lon");
    EXPECT_EQ(got.has_value(), r[2] != "none") << r.where;
    if (got) {
      EXPECT_NEAR(*got, r.Num(2), 1e-9) << r.where;
    }
  }
  EXPECT_NEAR(ParseCoordinate(FormatLatLong(-73.984, true), true).value_or(0), -73.984, 1e-9);  // reads back
}
