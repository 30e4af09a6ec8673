// Time of one call of each geodesy and geomagnetic procedure, over a fixed set of random inputs
// (so that neither the branch predictor nor the compiler sees one constant case).
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
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
  Loop(s, [](const Case& c) { return GreatCircleSphere(c.lat1, c.lat2, c.lon1, c.lon2); });
}
void BM_GeodesicWGS84(benchmark::State& s) {
  Loop(s, [](const Case& c) { return GeodesicWGS84(c.lat1, c.lat2, c.lon1, c.lon2); });
}
void BM_RhumbLine(benchmark::State& s) {
  Loop(s, [](const Case& c) { return RhumbLine(c.lat1, c.lat2, c.lon1, c.lon2); });
}
void BM_DirectSphere(benchmark::State& s) {
  Loop(s, [](const Case& c) { return DirectSphere(c.lat1, c.lon1, c.track, c.dist); });
}
void BM_DirectWGS84(benchmark::State& s) {
  Loop(s, [](const Case& c) { return DirectWGS84(c.lat1, c.lon1, c.track, c.dist); });
}
void BM_ComputeMagVar_WMM2005(benchmark::State& s) {
  Loop(s, [](const Case& c) {
    return ComputeMagVar(c.lat1 * 0.99 * kDegToRad, c.lon1 * kDegToRad, 0, {2007, 6, 1}, true);
  });
}
void BM_ComputeMagVar_IGRF10(benchmark::State& s) {
  Loop(s, [](const Case& c) {
    return ComputeMagVar(c.lat1 * 0.99 * kDegToRad, c.lon1 * kDegToRad, 0, {2007, 6, 1}, false);
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

}  // namespace

BENCHMARK(BM_GreatCircleSphere);
BENCHMARK(BM_GeodesicWGS84);
BENCHMARK(BM_RhumbLine);
BENCHMARK(BM_DirectSphere);
BENCHMARK(BM_DirectWGS84);
BENCHMARK(BM_ComputeMagVar_WMM2005);
BENCHMARK(BM_ComputeMagVar_IGRF10);
BENCHMARK(BM_LoadWMM2005);
BENCHMARK(BM_FormatLatLong);
BENCHMARK(BM_FormatSignificant);
