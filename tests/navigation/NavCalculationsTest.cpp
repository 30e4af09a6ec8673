#include "navigation/NavCalculations.hpp"

#include <gtest/gtest.h>

#include <GeographicLib/Geodesic.hpp>
#include <array>
#include <cmath>
#include <random>
#include <string>

#include "app/Angles.hpp"
#include "app/TextFormat.hpp"
#include "support/Golden.hpp"

using namespace norvane;
using norvane::test::GoldenRow;
using norvane::test::ReadGolden;

namespace {

using Texts = std::array<std::string, 9>;

// Intersection of two great-circle radials by vectors (independent of the formulary's spherical
// trigonometry): each radial's circle has the normal P x d; the circles meet at +-(n1 x n2).
// Also returns x . d2: positive when the crossing ahead of point 1 lies ahead of point 2 too.
std::pair<GeoPoint, double> VectorIntersection(double lat1, double lon1, double crs1, double lat2, double lon2,
                                               double crs2) {
  using V = std::array<double, 3>;
  const auto cross = [](V a, V b) {
    return V{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
  };
  const auto normal = [&](double lat, double lon, double crs) {
    const double la = lat * M_PI / 180, lo = lon * M_PI / 180, c = crs * M_PI / 180;
    const V p{std::cos(la) * std::cos(lo), std::cos(la) * std::sin(lo), std::sin(la)};
    const V north{-std::sin(la) * std::cos(lo), -std::sin(la) * std::sin(lo), std::cos(la)};
    const V east{-std::sin(lo), std::cos(lo), 0};
    const V d{std::cos(c) * north[0] + std::sin(c) * east[0], std::cos(c) * north[1] + std::sin(c) * east[1],
              std::cos(c) * north[2] + std::sin(c) * east[2]};
    return std::pair{d, cross(p, d)};
  };
  const auto [d1, n1] = normal(lat1, lon1, crs1);
  const auto [d2, n2] = normal(lat2, lon2, crs2);
  V x = cross(n1, n2);
  const double len = std::sqrt(x[0] * x[0] + x[1] * x[1] + x[2] * x[2]);
  for (double& c : x) c /= len;
  if (x[0] * d1[0] + x[1] * d1[1] + x[2] * d1[2] < 0)
    for (double& c : x) c = -c;  // the crossing ahead of point 1 on its radial
  return {GeoPoint{std::asin(x[2]) * 180 / M_PI, std::atan2(x[1], x[0]) * 180 / M_PI},
          x[0] * d2[0] + x[1] * d2[1] + x[2] * d2[2]};
}

}  // namespace

TEST(TracksAndDistance, EdgeCasesOfTheScreen) {
  for (const GoldenRow& r : ReadGolden("navigation/data/geodesy.txt", "tracks")) {
    const TracksResult t = ComputeTracks(r.Num(0), r.Num(1), r.Num(2), r.Num(3), nullptr);
    const DistanceUnit unit = r[4] == "km"   ? DistanceUnit::Km
                              : r[4] == "m"  ? DistanceUnit::M
                              : r[4] == "ft" ? DistanceUnit::Ft
                                             : DistanceUnit::Nm;
    const Texts texts = TracksTexts(t, unit);
    for (size_t i = 0; i < 9; ++i)
      if (r[5 + i] != "-") {
        EXPECT_EQ(texts[i], r[5 + i]) << r.where << " cell " << i;
      }
  }
}

TEST(TracksAndDistance, MagneticTracksSubtractEachEndsVariation) {
  const MagSettings igrf2007{2007, MagModel::IGRF10};
  const double lat1 = 51.5, lon1 = -0.5, lat2 = 40.6, lon2 = -73.8;
  const TracksResult t = ComputeTracks(lat1, lon1, lat2, lon2, nullptr);
  const TracksResult m = ComputeTracks(lat1, lon1, lat2, lon2, &igrf2007);
  const double v1 = ComputeMagVar(lat1 * kDegToRad, lon1 * kDegToRad, 0, {2007, 1, 1}, MagModel::IGRF10);
  const double v2 = ComputeMagVar(lat2 * kDegToRad, lon2 * kDegToRad, 0, {2007, 1, 1}, MagModel::IGRF10);
  EXPECT_DOUBLE_EQ(m.variationOrigin, v1);
  EXPECT_DOUBLE_EQ(m.variationDestination, v2);
  for (int row = 0; row < 3; ++row) {
    EXPECT_NEAR(m.tracks[row][0], Norm360(t.tracks[row][0] - v1), 1e-12) << row;
    EXPECT_NEAR(m.tracks[row][1], Norm360(t.tracks[row][1] - v2), 1e-12) << row;
  }
  // The rhumb line's single true track differs under the two columns when magnetic.
  EXPECT_EQ(t.tracks[1][0], t.tracks[1][1]);
  EXPECT_NE(TrackText(m.tracks[1][0]), TrackText(m.tracks[1][1]));
  // Undefined tracks stay ND.
  const TracksResult same = ComputeTracks(lat1, lon1, lat1, lon1, &igrf2007);
  EXPECT_EQ(TracksTexts(same, DistanceUnit::Nm)[1], "ND");

  // Near a pole the variation is taken at 89°59' with the latitude's sign.
  const TracksResult polar = ComputeTracks(89.99, 10, -89.995, 10, &igrf2007);
  const double edge = (89 + 59 / 60.0) * kDegToRad;
  EXPECT_NEAR(polar.variationOrigin, ComputeMagVar(edge, 10 * kDegToRad, 0, {2007, 1, 1}, MagModel::IGRF10), 1e-6);
  EXPECT_NEAR(polar.variationDestination, ComputeMagVar(-edge, 10 * kDegToRad, 0, {2007, 1, 1}, MagModel::IGRF10),
              1e-6);
}

TEST(PointFromTrackDistance, UnitsTracksAndWraps) {
  // The nautical mile is 1852 m exactly, the foot 0.3048 m.
  for (auto [unit, perNm] :
       {std::pair{DistanceUnit::M, 1852.0}, {DistanceUnit::Km, 1.852}, {DistanceUnit::Ft, 1852 / 0.3048}}) {
    EXPECT_DOUBLE_EQ(UnitToNm(perNm, unit), 1);
    EXPECT_DOUBLE_EQ(NmToUnit(1, unit), perNm);
  }
  EXPECT_TRUE(IsUndefined(NmToUnit(kUndefined, DistanceUnit::Km)));

  for (bool wgs84 : {false, true}) {
    const PointResult p360 = ComputePointFromTrack(45, 7, 360, 100, wgs84, nullptr, std::nullopt);
    const PointResult p0 = ComputePointFromTrack(45, 7, 0, 100, wgs84, nullptr, std::nullopt);
    EXPECT_EQ(p360.point.lat, p0.point.lat);
    EXPECT_EQ(p360.point.lon, p0.point.lon);
  }
  // Against GeographicLib's direct problem on WGS-84.
  double lat2 = 0, lon2 = 0;
  GeographicLib::Geodesic::WGS84().Direct(-33.9, 151.2, 123.4, 2000 * 1852.0, lat2, lon2);
  const PointResult g = ComputePointFromTrack(-33.9, 151.2, 123.4, 2000, true, nullptr, std::nullopt);
  EXPECT_NEAR(g.point.lat, lat2, 1e-8);
  EXPECT_NEAR(g.point.lon, lon2, 1e-8);
}

TEST(PointFromTrackDistance, MagneticTrackAddsTheVariation) {
  const MagSettings wmm2005{2005, MagModel::WMM2005};
  const PointResult given = ComputePointFromTrack(45, 7, 90, 100, false, &wmm2005, -10.0);
  EXPECT_DOUBLE_EQ(given.trueTrack, 80);
  EXPECT_FALSE(given.variationComputed);
  const PointResult wrap = ComputePointFromTrack(45, 7, 355, 100, false, &wmm2005, 10.0);
  EXPECT_DOUBLE_EQ(wrap.trueTrack, 5);
  const PointResult computed = ComputePointFromTrack(45, 7, 90, 100, false, &wmm2005, std::nullopt);
  ASSERT_TRUE(computed.variation.has_value());
  EXPECT_TRUE(computed.variationComputed);
  // The variation as its box shows it, so that giving it back reproduces the point.
  const std::string shown =
      FormatMask(ComputeMagVar(45 * kDegToRad, 7 * kDegToRad, 0, {2005, 1, 1}, MagModel::WMM2005), "0.0");
  EXPECT_DOUBLE_EQ(computed.trueTrack, 90 + *computed.variation);
  const PointResult again = ComputePointFromTrack(45, 7, 90, 100, false, &wmm2005, std::stod(shown));
  EXPECT_TRUE(again.point.lat == computed.point.lat && again.point.lon == computed.point.lon);
}

TEST(RadialIntersection, FormularyExampleAndDegenerateSetUps) {
  // E. Williams' worked example: REO (42.600 N, 117.866 W) on 051, BKE (44.840 N, 117.806 W) on
  // 137 meet at 43.572 N, 116.189 W.
  const GeoPoint reo = RadialIntersection(42.6, -117.866, 51, 44.84, -117.806, 137);
  EXPECT_NEAR(reo.lat, 43.572, 5e-4);
  EXPECT_NEAR(reo.lon, -116.189, 5e-4);
  EXPECT_EQ(IntersectionText(reo.lat, false).substr(0, 6), "N43 34");
  EXPECT_EQ(IntersectionText(reo.lon, true).substr(0, 7), "W116 11");

  for (const GoldenRow& r : ReadGolden("navigation/data/geodesy.txt", "intersection")) {
    const double in[6] = {r.Num(0), r.Num(1), r.Num(2), r.Num(3), r.Num(4), r.Num(5)};
    const GeoPoint p = RadialIntersection(in[0], in[1], in[2], in[3], in[4], in[5]);
    if (r[6] == "vector") {
      const GeoPoint v = VectorIntersection(in[0], in[1], in[2], in[3], in[4], in[5]).first;
      EXPECT_NEAR(p.lat, v.lat, 1e-9) << r.where;
      EXPECT_NEAR(p.lon, v.lon, 1e-9) << r.where;
    } else {
      EXPECT_EQ(IntersectionText(p.lat, false), r[6]) << r.where;
      EXPECT_EQ(IntersectionText(p.lon, true), r[7]) << r.where;
    }
  }
}

// Random set-ups, a fixed number of them: where the vector solution finds the crossing ahead of
// both points the formulary must find it too, at the same place; where it lies behind one of them
// the formulary must say "Not calculable".
TEST(RadialIntersection, AgreesWithTheVectorSolutionOnRandomSetUps) {
  std::mt19937 rng(7);
  std::uniform_real_distribution<double> lat(-60, 60), lon(-180, 180), d(0.5, 8), crs(0, 360);
  int crossings = 0, none = 0;
  for (int round = 0; round < 2000; ++round) {
    const double lat1 = lat(rng), lon1 = lon(rng);
    const double lat2 = std::clamp(lat1 + d(rng) * (rng() % 2 ? 1 : -1), -70.0, 70.0);
    double lon2 = lon1 + d(rng) * (rng() % 2 ? 1 : -1);
    lon2 = lon2 > 180 ? lon2 - 360 : lon2 < -180 ? lon2 + 360 : lon2;
    const double c1 = crs(rng), c2 = crs(rng);
    const auto [v, ahead2] = VectorIntersection(lat1, lon1, c1, lat2, lon2, c2);
    if (std::fabs(ahead2) < 1e-3 || std::fabs(v.lat) > 89.9) continue;  // ill-conditioned
    const GeoPoint p = RadialIntersection(lat1, lon1, c1, lat2, lon2, c2);
    SCOPED_TRACE(testing::Message() << lat1 << " " << lon1 << " " << c1 << " " << lat2 << " " << lon2 << " " << c2);
    if (ahead2 < 0) {
      ++none;
      EXPECT_EQ(IntersectionText(p.lat, false), "Not calculable");
      continue;
    }
    ++crossings;
    EXPECT_NEAR(p.lat, v.lat, 1e-7);
    double dlon = std::fabs(p.lon - v.lon);
    EXPECT_LT(std::min(dlon, 360 - dlon), 1e-7);
  }
  EXPECT_GT(crossings, 500);
  EXPECT_GT(none, 500);
}
