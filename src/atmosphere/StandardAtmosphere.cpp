#include "atmosphere/StandardAtmosphere.hpp"

#include <cmath>

namespace norvane {
namespace {

// Resolves the in/out layer argument. -1 means "unknown"; any other value outside 0..7 could only
// come from a caller's mistake and is resolved the same way rather than indexing past the tables.
int16_t ResolveLayer(double H, int16_t& layer) {
  if (layer < 0 || layer > kAtmosphereLayers) layer = GetAtmosphereLayer(H);
  return layer;
}

// Layer whose coefficients apply and the altitude to evaluate them at: layer 7 has no
// coefficients, so the top layer is evaluated at the top of the model.
struct Evaluation {
  int i;
  double H;
};
Evaluation EvaluationPoint(double H, int16_t layer) {
  if (layer >= kAtmosphereLayers) return {kAtmosphereLayers - 1, kHb[kAtmosphereLayers]};
  return {layer, H};
}

// Supersonic fixed-point step shared by MachFromCAS and CASFromMach: solves the Rayleigh pitot
// formula (r + 1) = kRayleigh M^7 / (7 M^2 - 1)^2.5 for M, starting from M >= 1.
double RayleighIterate(double M, double rPlusOne, double tolerance) {
  for (int round = 0; round < kMachIterationLimit; ++round) {
    const double prev = M;
    M = kRayleighIteration * std::sqrt(rPlusOne * std::pow(1 - 1 / (7 * M * M), 2.5));
    if (!std::isfinite(M) || std::fabs(prev - M) < tolerance) break;
  }
  return M;
}

}  // namespace

int16_t GetAtmosphereLayer(double H) {
  int16_t i = 0;
  while (i < kAtmosphereLayers) {
    if (H < kHb[i + 1]) return i;
    ++i;
  }
  return i;  // 7: at or above the top; NaN also ends here, harmlessly
}

double GetStdTemperature(double H, int16_t& layer) {
  const Evaluation e = EvaluationPoint(H, ResolveLayer(H, layer));
  return (e.H - kHb[e.i]) * kLb[e.i] + kTb[e.i] - kKelvinOffset;
}

double GetStdTemperature(double H) {
  int16_t layer = kLayerUnknown;
  return GetStdTemperature(H, layer);
}

double GetPressureRatio(double H, int16_t& layer) {
  const Evaluation e = EvaluationPoint(H, ResolveLayer(H, layer));
  const int i = e.i;
  if (kLb[i] != 0) {
    const double T = (e.H - kHb[i]) * kLb[i] + kTb[i];
    return kPb[i] * std::pow(T / kTb[i], -kGMR / kLb[i]);
  }
  return kPb[i] * std::exp((-kGMR / kTb[i]) * (e.H - kHb[i]));
}

double GetPressureRatio(double H) {
  int16_t layer = kLayerUnknown;
  return GetPressureRatio(H, layer);
}

double GeometricToGeopotential(double z) { return z - z * z / (z + kEarthRadiusGeopotential); }

double GeopotentialToGeometric(double H) { return H * H / (kEarthRadiusGeopotential - H) + H; }

double ImpactPressureRatio(double M) {
  if (M < 1) return std::pow(1 + 0.2 * M * M, 3.5) - 1;
  return kRayleigh * std::pow(M, 7) / std::pow(7 * M * M - 1, 2.5) - 1;
}

double MachFromCAS(double CAS, double delta) {
  const double x = CAS / kA0Kt;
  const double r = ImpactPressureRatio(x) / delta;
  double M = std::sqrt(5 * (std::pow(r + 1, kTwoSevenths) - 1));
  if (M >= 1) M = RayleighIterate(M, r + 1, 1e-8);
  return M;
}

double CASFromMach(double M, double delta) {
  const double r0 = ImpactPressureRatio(M) * delta;
  double X = std::sqrt(5 * (std::pow(r0 + 1, kTwoSevenths) - 1));
  if (X >= 1) X = RayleighIterate(X, r0 + 1, 1e-6);
  return kA0Kt * X;
}

double SpeedOfSound(double T) { return std::sqrt(T * kGammaR); }

double TASFromCAS(double CAS, double Alt, double DISA) {
  const double H = Alt * kFt;
  int16_t layer = GetAtmosphereLayer(H);
  const double delta = GetPressureRatio(H, layer);
  const double T = GetStdTemperature(H, layer) + kKelvinOffset + DISA;
  const double M = MachFromCAS(CAS, delta);
  return SpeedOfSound(T) * M * 3600 / kNm;
}

double TASFromMach(double M, double Alt, double DISA) {
  const double H = Alt * kFt;
  const double T = GetStdTemperature(H) + kKelvinOffset + DISA;
  return SpeedOfSound(T) * M * 3600 / kNm;
}

double OneMinusExp(double x) {
  if (std::fabs(x) <= 0.01) {
    const double x2 = x * x, x3 = x2 * x;
    return -(x + x2 / 2 + x3 / 6 + x2 * x2 / 24 + x3 * x2 / 120 + x3 * x3 / 720);
  }
  return 1 - std::exp(x);
}

double PressureAltitudeFt(double delta) {
  double H;
  if (delta <= kPb[1])
    H = std::log(kPb[1] / delta) / kK11 + kHb[1];
  else
    H = OneMinusExp(std::log(delta) / kPressureExponent) * kT0 / 0.0065;
  return H / kFt;
}

double DensityAltitudeM(double sigma) {
  if (sigma <= kSigma11) return std::log(kSigma11 / sigma) / kK11 + kHb[1];
  return OneMinusExp(std::log(sigma) / kDensityExponent) * kT0 / 0.0065;
}

double ChangeoverAltitudeFt(double CAS, double M) {
  const double q1 = ImpactPressureRatio(CAS / kA0Kt);
  const double q2 = ImpactPressureRatio(M);
  if (q1 == 0 || q2 == 0) return kChangeoverNone;
  const double delta = q1 / q2;
  if (!std::isfinite(delta)) return 0;
  if (delta > 1) return kChangeoverNone;
  if (delta < kPb[2]) return kChangeoverAbove;
  const double A = PressureAltitudeFt(delta);
  return std::isfinite(A) ? A : 0;
}

double FahrenheitToCelsius(double t) { return (t - 32) / 1.8; }

double CelsiusToFahrenheit(double t) { return t * 1.8 + 32; }

}  // namespace norvane
