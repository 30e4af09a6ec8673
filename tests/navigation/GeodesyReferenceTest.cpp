// The inverse and direct procedures against GeographicLib (C. F. F. Karney, "Algorithms for
// geodesics", J. Geodesy 87, 43-55, 2013), which solves the same problems to round-off, on
// thousands of random point pairs drawn with a fixed seed.
#include <GeographicLib/Geodesic.hpp>
#include <GeographicLib/Rhumb.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "navigation/Geodesy.hpp"

using namespace norvane;
using GeographicLib::Geodesic;

namespace {

constexpr double kMetresPerNm = 1852;
constexpr int kPairs = 20000;

// Uniform doubles from a fixed-seed generator (the standard distributions are
// implementation-defined; this is not).
class Random {
 public:
  explicit Random(uint64_t seed) : gen_(seed) {}
  double Uniform(double a, double b) { return a + (b - a) * static_cast<double>(gen_() >> 11) * 0x1p-53; }

 private:
  std::mt19937_64 gen_;
};

struct Pair {
  double lat1, lon1, lat2, lon2;
};

// A mix of pair kinds: anywhere (uniform on the sphere), short lines (up to a degree, down to
// centimetres), high latitudes, and nearly antipodal pairs.
std::vector<Pair> RandomPairs(uint64_t seed) {
  Random rnd(seed);
  std::vector<Pair> pairs;
  const auto lat = [&] { return std::asin(rnd.Uniform(-1, 1)) * 180 / M_PI; };
  for (int i = 0; i < kPairs; ++i) {
    Pair p{lat(), rnd.Uniform(-180, 180), 0, 0};
    switch (i % 4) {
      case 0:
      case 1:
        p.lat2 = lat();
        p.lon2 = rnd.Uniform(-180, 180);
        break;
      case 2: {  // short line: offset of 10^-7 .. 1 degree
        const double scale = std::pow(10.0, rnd.Uniform(-7, 0));
        p.lat2 = std::clamp(p.lat1 + rnd.Uniform(-scale, scale), -90.0, 90.0);
        p.lon2 = p.lon1 + rnd.Uniform(-scale, scale);
        break;
      }
      default: {  // high latitudes or near the antipode
        if (i % 8 == 3) {
          p.lat1 = rnd.Uniform(80, 90) * (rnd.Uniform(0, 1) < 0.5 ? -1 : 1);
          p.lat2 = rnd.Uniform(-90, 90);
          p.lon2 = rnd.Uniform(-180, 180);
        } else {
          p.lat2 = -p.lat1 + rnd.Uniform(-1, 1);
          p.lon2 = p.lon1 + 180 + rnd.Uniform(-1, 1);
        }
      }
    }
    if (p.lon2 > 180) p.lon2 -= 360;
    if (p.lon2 < -180) p.lon2 += 360;
    pairs.push_back(p);
  }
  return pairs;
}

// Difference of two directions in degrees, in [0, 180].
double AngleDiff(double a, double b) { return std::fabs(std::remainder(a - b, 360.0)); }

// The quadrant rule of GreatCircleSphere applied to a geometric azimuth: the arcsine keeps
// sin(azimuth), the latitude order picks the half-plane.
double SphereRule(double azimuth, double lat1, double lat2) {
  const double a = std::asin(std::sin(azimuth * M_PI / 180)) * 180 / M_PI;
  if (lat2 < lat1) return 180 - a;
  return a < 0 ? a + 360 : a;
}

}  // namespace

TEST(GeodesyReference, VincentyInverseAgreesWithGeographicLib) {
  const Geodesic& wgs84 = Geodesic::WGS84();
  int converged = 0, failed = 0;
  double maxDist = 0, maxTrack = 0;
  for (const Pair& p : RandomPairs(20240501)) {
    const InverseResult r = GeodesicWGS84(p.lat1, p.lon1, p.lat2, p.lon2);
    double s12, azi1, azi2;
    wgs84.Inverse(p.lat1, p.lon1, p.lat2, p.lon2, s12, azi1, azi2);
    SCOPED_TRACE(testing::Message() << p.lat1 << " " << p.lon1 << " " << p.lat2 << " " << p.lon2);
    if (IsUndefined(r.distance)) {
      // Vincenty fails only close to the antipode (within 1% of half the meridian).
      EXPECT_GT(s12, 19'800'000);
      EXPECT_TRUE(IsUndefined(r.trackIni) && IsUndefined(r.trackFin));
      ++failed;
      continue;
    }
    ++converged;
    const double dd = std::fabs(r.distance * kMetresPerNm - s12);
    maxDist = std::max(maxDist, dd);
    EXPECT_LE(dd, 0.5e-3);
    if (s12 < 1) continue;  // tracks of sub-metre lines carry the inputs' rounding
    const double dt = std::max(AngleDiff(r.trackIni, azi1), AngleDiff(r.trackFin, azi2));
    maxTrack = std::max(maxTrack, dt);
    EXPECT_LE(dt, 1e-5);
  }
  std::printf("Vincenty inverse: %d converged, %d not; max |ds| %.3g mm, max |dtrack| %.3g deg\n", converged, failed,
              maxDist * 1e3, maxTrack);
  EXPECT_GT(converged, kPairs * 9 / 10);
}

TEST(GeodesyReference, SphereDistancesAndTracks) {
  // GeographicLib's geodesic on a sphere (f = 0) of the navigator's radius.
  const Geodesic sphere(kSphereRadiusNm * kMetresPerNm, 0);
  double maxDist = 0, maxTrack = 0;
  for (const Pair& p : RandomPairs(4242)) {
    const InverseResult r = GreatCircleSphere(p.lat1, p.lon1, p.lat2, p.lon2);
    double s12, azi1, azi2;
    sphere.Inverse(p.lat1, p.lon1, p.lat2, p.lon2, s12, azi1, azi2);
    SCOPED_TRACE(testing::Message() << p.lat1 << " " << p.lon1 << " " << p.lat2 << " " << p.lon2);
    const double dd = std::fabs(r.distance * kMetresPerNm - s12);
    maxDist = std::max(maxDist, dd);
    EXPECT_LE(dd, 1e-6 + 1e-12 * s12);
    // Tracks follow the latitude-order rule, not the geometric azimuth; near the antipode the
    // great circle itself is ill-determined, and sub-metre lines carry the inputs' rounding.
    if (s12 < 1 || s12 > 0.999 * M_PI * kSphereRadiusNm * kMetresPerNm) continue;
    const double dt = std::max(AngleDiff(r.trackIni, SphereRule(azi1, p.lat1, p.lat2)),
                               AngleDiff(r.trackFin, SphereRule(azi2, p.lat1, p.lat2)));
    maxTrack = std::max(maxTrack, dt);
    EXPECT_LE(dt, 1e-5);
  }
  std::printf("Sphere: max |ds| %.3g mm, max |dtrack| %.3g deg (after the quadrant rule)\n", maxDist * 1e3, maxTrack);
}

TEST(GeodesyReference, DirectAgreesWithGeographicLibOnTheEllipsoidAndTheSphere) {
  const Geodesic sphere(kSphereRadiusNm * kMetresPerNm, 0);
  for (const bool wgs : {true, false}) {
    const Geodesic& ref = wgs ? Geodesic::WGS84() : sphere;
    Random rnd(wgs ? 77 : 99);
    double maxMiss = 0;
    for (int i = 0; i < kPairs; ++i) {
      const double lat1 = std::asin(rnd.Uniform(-1, 1)) * 180 / M_PI, lon1 = rnd.Uniform(-180, 180);
      const double track = rnd.Uniform(0, 360);
      // Up to a full meridian, with short distances well represented.
      const double distNm = i % 3 == 0 ? std::pow(10.0, rnd.Uniform(-3, 3)) : rnd.Uniform(0, 21600);
      const GeoPoint p = wgs ? DirectWGS84(lat1, lon1, track, distNm) : DirectSphere(lat1, lon1, track, distNm);
      double lat2, lon2, miss;
      ref.Direct(lat1, lon1, track, distNm * kMetresPerNm, lat2, lon2);
      ref.Inverse(p.lat, p.lon, lat2, lon2, miss);
      SCOPED_TRACE(testing::Message() << wgs << ": " << lat1 << " " << lon1 << " " << track << " " << distNm);
      maxMiss = std::max(maxMiss, miss);
      EXPECT_LE(miss, 0.5e-3);
      EXPECT_LE(std::fabs(p.lon), 180);
    }
    std::printf("%s direct: max distance to GeographicLib's point %.3g mm\n", wgs ? "Vincenty" : "Sphere",
                maxMiss * 1e3);
  }
}

TEST(GeodesyReference, RhumbLineAgreesWhereItTakesTheShortWay) {
  // GeographicLib's rhumb line on the same sphere always takes the short way; RhumbLine does
  // so only on a parallel, so pairs more than 180 degrees of longitude apart are left out.
  const GeographicLib::Rhumb rhumb(kSphereRadiusNm * kMetresPerNm, 0, false);
  double maxAbs = 0, maxRel = 0, maxTrack = 0;
  int compared = 0;
  for (const Pair& p : RandomPairs(1717)) {
    if (std::fabs(p.lon2 - p.lon1) >= 180) continue;
    ++compared;
    const RhumbResult r = RhumbLine(p.lat1, p.lon1, p.lat2, p.lon2);
    double s12, azi12;
    rhumb.Inverse(p.lat1, p.lon1, p.lat2, p.lon2, s12, azi12);
    SCOPED_TRACE(testing::Message() << p.lat1 << " " << p.lon1 << " " << p.lat2 << " " << p.lon2);
    // The distance is dlat / cos(track): nearly east-west lines lose accuracy as 1 / cos(track),
    // and the latitude difference of lines of a few metres keeps only the digits left after
    // subtracting two latitudes near 50 degrees (about 1e-15 degree, 0.1 nm).
    const double cosTrack = std::fabs(std::cos(azi12 * M_PI / 180));
    const double err = std::fabs(r.distance * kMetresPerNm - s12) * cosTrack;
    maxAbs = std::max(maxAbs, err);
    maxRel = std::max(maxRel, err / s12);
    EXPECT_LE(err, 1e-8 + 1e-11 * s12);
    if (s12 < 1) continue;
    const double dt = AngleDiff(r.track, azi12);
    maxTrack = std::max(maxTrack, dt);
    EXPECT_LE(dt, 1e-5);
  }
  std::printf("Rhumb: %d pairs, max |ds| cos(track) %.3g mm, relative %.3g; max |dtrack| %.3g deg\n", compared,
              maxAbs * 1e3, maxRel, maxTrack);
}
