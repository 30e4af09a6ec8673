// Time of one call of each geodesy and geomagnetic procedure, over a fixed set of random inputs
// (so that neither the branch predictor nor the compiler sees one constant case), each beside
// GeographicLib doing the same job on the same inputs (BM_Ref_*).
#include <GeographicLib/Geocentric.hpp>
#include <GeographicLib/Geodesic.hpp>
#include <GeographicLib/Rhumb.hpp>
#include <GeographicLib/SphericalHarmonic1.hpp>
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

#include "app/Angles.hpp"
#include "navigation/GeoMag.hpp"
#include "navigation/Geodesy.hpp"

using namespace norvane;

namespace {

struct Case {
  double lat1, lon1, lat2, lon2, track, dist;
};

const std::vector<Case>& Cases() {
  static const std::vector<Case> cases = [] {
    std::mt19937_64 gen(12345);
    const auto u = [&](double a, double b) { return a + (b - a) * static_cast<double>(gen() >> 11) * 0x1p-53; };
    std::vector<Case> v(4096);
    for (Case& c : v) {
      c.lat1 = std::asin(u(-1, 1)) * kRadToDeg;
      c.lat2 = std::asin(u(-1, 1)) * kRadToDeg;
      c.lon1 = u(-180, 180);
      c.lon2 = u(-180, 180);
      // Keep the pairs away from Vincenty's antipodal region, where the inverse stops after 20 rounds.
      if (std::fabs(c.lat1 + c.lat2) < 1 && std::fabs(std::remainder(c.lon2 - c.lon1, 360)) > 178) c.lon2 = 0;
      c.track = u(0, 360);
      c.dist = u(0, 5400);
    }
    return v;
  }();
  return cases;
}

template <class F>
void Loop(benchmark::State& state, F f) {
  const auto& cases = Cases();
  size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(f(cases[i]));
    i = (i + 1) & (cases.size() - 1);
  }
}

void BM_GreatCircleSphere(benchmark::State& s) {
  Loop(s, [](const Case& c) { return GreatCircleSphere(c.lat1, c.lon1, c.lat2, c.lon2); });
}
void BM_GeodesicWGS84(benchmark::State& s) {
  Loop(s, [](const Case& c) { return GeodesicWGS84(c.lat1, c.lon1, c.lat2, c.lon2); });
}
void BM_RhumbLine(benchmark::State& s) {
  Loop(s, [](const Case& c) { return RhumbLine(c.lat1, c.lon1, c.lat2, c.lon2); });
}
void BM_DirectSphere(benchmark::State& s) {
  Loop(s, [](const Case& c) { return DirectSphere(c.lat1, c.lon1, c.track, c.dist); });
}
void BM_DirectWGS84(benchmark::State& s) {
  Loop(s, [](const Case& c) { return DirectWGS84(c.lat1, c.lon1, c.track, c.dist); });
}
void BM_ComputeMagVar_WMM2005(benchmark::State& s) {
  Loop(s, [](const Case& c) {
    return ComputeMagVar(c.lat1 * 0.99 * kDegToRad, c.lon1 * kDegToRad, 0, {2007, 6, 1}, MagModel::WMM2005);
  });
}
void BM_ComputeMagVar_IGRF10(benchmark::State& s) {
  Loop(s, [](const Case& c) {
    return ComputeMagVar(c.lat1 * 0.99 * kDegToRad, c.lon1 * kDegToRad, 0, {2007, 6, 1}, MagModel::IGRF10);
  });
}
void BM_ComputeMagVar_WMM2025(benchmark::State& s) {
  Loop(s, [](const Case& c) {
    return ComputeMagVar(c.lat1 * 0.99 * kDegToRad, c.lon1 * kDegToRad, 0, {2027, 6, 1}, MagModel::WMM2025);
  });
}
void BM_LoadWMM2005(benchmark::State& s) {
  for (auto _ : s) {
    GaussCoefficients c = LoadWMM2005();
    benchmark::DoNotOptimize(c);
  }
}
void BM_FormatLatLong(benchmark::State& s) {
  Loop(s, [](const Case& c) { return FormatLatLong(c.lon1, true); });
}
void BM_FormatSignificant(benchmark::State& s) {
  Loop(s, [](const Case& c) { return FormatSignificant(c.dist + 0.001, 4, 3); });
}

// --- References: GeographicLib (Karney's algorithms) on the same inputs and the same figures.

struct Inverse {
  double s12, azi1, azi2;
};
struct Direct {
  double lat2, lon2;
};
const GeographicLib::Geodesic& Sphere() {
  static const GeographicLib::Geodesic g(kSphereRadiusNm, 0);
  return g;
}

void BM_Ref_GeodesicSphereInverse(benchmark::State& s) {
  Loop(s, [](const Case& c) {
    Inverse r;
    Sphere().Inverse(c.lat1, c.lon1, c.lat2, c.lon2, r.s12, r.azi1, r.azi2);
    return r;
  });
}
void BM_Ref_GeodesicWGS84Inverse(benchmark::State& s) {
  Loop(s, [](const Case& c) {
    Inverse r;
    GeographicLib::Geodesic::WGS84().Inverse(c.lat1, c.lon1, c.lat2, c.lon2, r.s12, r.azi1, r.azi2);
    return r;
  });
}
void BM_Ref_RhumbSphereInverse(benchmark::State& s) {
  static const GeographicLib::Rhumb rhumb(kSphereRadiusNm, 0, false);
  Loop(s, [](const Case& c) {
    Inverse r;
    rhumb.Inverse(c.lat1, c.lon1, c.lat2, c.lon2, r.s12, r.azi1);
    return r;
  });
}
void BM_Ref_GeodesicSphereDirect(benchmark::State& s) {
  Loop(s, [](const Case& c) {
    Direct r;
    Sphere().Direct(c.lat1, c.lon1, c.track, c.dist, r.lat2, r.lon2);
    return r;
  });
}
void BM_Ref_GeodesicWGS84Direct(benchmark::State& s) {
  Loop(s, [](const Case& c) {
    Direct r;
    GeographicLib::Geodesic::WGS84().Direct(c.lat1, c.lon1, c.track, c.dist * 1852, r.lat2, r.lon2);
    return r;
  });
}

// The work of GeographicLib::MagneticModel for one declination: geodetic to geocentric with the
// local frame, the time-advanced spherical-harmonic sum and its gradient, the rotation to north and
// east. Fed the same coefficients, so it does what ComputeMagVar does.
class MagneticReference {
 public:
  explicit MagneticReference(const GaussCoefficients& c, int secularDegree = 8) {
    const int n = c.maxDegree, n1 = secularDegree;
    const auto fill = [](const double(&a)[kGeomagMaxDegree + 1][kGeomagMaxDegree + 1], int nmax, bool sine) {
      std::vector<double> v;
      for (int m = sine ? 1 : 0; m <= nmax; ++m)
        for (int k = m; k <= nmax; ++k) v.push_back(a[k][m]);
      return v;
    };
    g_ = fill(c.g, n, false);
    h_ = fill(c.h, n, true);
    gdot_ = fill(c.gdot, n1, false);
    hdot_ = fill(c.hdot, n1, true);
    harm_ = std::make_unique<GeographicLib::SphericalHarmonic1>(g_, h_, n, gdot_, hdot_, n1, kGeomagReferenceRadiusKm,
                                                                GeographicLib::SphericalHarmonic1::SCHMIDT);
  }
  double Declination(double latDeg, double lonDeg, double years) const {
    static const GeographicLib::Geocentric earth(6378.137, 1 / 298.257223563);  // km
    double x, y, z, bx, by, bz;
    earth.Forward(latDeg, lonDeg, 0, x, y, z, m_);
    (*harm_)(years, x, y, z, bx, by, bz);
    // m_ holds the local east, north, up axes as columns; B is minus the gradient.
    const double east = -(m_[0] * bx + m_[3] * by + m_[6] * bz);
    const double north = -(m_[1] * bx + m_[4] * by + m_[7] * bz);
    return std::atan2(east, north) * kRadToDeg;
  }

 private:
  std::vector<double> g_, h_, gdot_, hdot_;
  std::unique_ptr<GeographicLib::SphericalHarmonic1> harm_;
  mutable std::vector<double> m_ = std::vector<double>(9);
};

// 2007-06-01 is 882 days after the models' epoch.
constexpr double kYearsSinceEpoch = 882 / 365.25;

void BM_Ref_MagneticWMM2005(benchmark::State& s) {
  static const MagneticReference ref(LoadWMM2005());
  Loop(s, [](const Case& c) { return ref.Declination(c.lat1 * 0.99, c.lon1, kYearsSinceEpoch); });
}
void BM_Ref_MagneticIGRF10(benchmark::State& s) {
  static const MagneticReference ref(LoadIGRF10());
  Loop(s, [](const Case& c) { return ref.Declination(c.lat1 * 0.99, c.lon1, kYearsSinceEpoch); });
}

}  // namespace

BENCHMARK(BM_GreatCircleSphere);
BENCHMARK(BM_GeodesicWGS84);
BENCHMARK(BM_RhumbLine);
BENCHMARK(BM_DirectSphere);
BENCHMARK(BM_DirectWGS84);
BENCHMARK(BM_ComputeMagVar_WMM2005);
BENCHMARK(BM_ComputeMagVar_IGRF10);
BENCHMARK(BM_ComputeMagVar_WMM2025);
BENCHMARK(BM_LoadWMM2005);
BENCHMARK(BM_FormatLatLong);
BENCHMARK(BM_FormatSignificant);
BENCHMARK(BM_Ref_GeodesicSphereInverse);
BENCHMARK(BM_Ref_GeodesicWGS84Inverse);
BENCHMARK(BM_Ref_RhumbSphereInverse);
BENCHMARK(BM_Ref_GeodesicSphereDirect);
BENCHMARK(BM_Ref_GeodesicWGS84Direct);
BENCHMARK(BM_Ref_MagneticWMM2005);
BENCHMARK(BM_Ref_MagneticIGRF10);
