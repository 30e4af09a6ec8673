#include "atmosphere/Descent.hpp"

#include <algorithm>
#include <cmath>
#include <functional>

#include "app/Angles.hpp"
#include "app/TextFormat.hpp"
#include "atmosphere/StandardAtmosphere.hpp"

namespace norvane {
namespace {

constexpr double kFtPerNm = kNm / kFt;  // 6076.12 ft
constexpr double kMaxStepFt = 100;      // longest integration step
constexpr double kMaxRateFpm = DescentGivenValue(DescentGiven::Rate).max;
constexpr double kKtPerFpm = 60 * kFt / kNm;  // 1 ft/min in knots

ShownValue Shown(double v, std::string_view mask) { return {FormatMask(v, mask), v}; }

// The schedule and the temperature at one pressure altitude.
struct Level {
  double h = 0;      // ft
  double tas = 0;    // kt
  double ratio = 1;  // T / T_std: feet of true height per foot of pressure altitude
};

Level LevelAt(const DescentInput& in, double h) {
  Level l;
  l.h = h;
  l.tas = TASFromCAS(in.ias, h, in.disa);
  // Both TAS grow with sqrt(T) alike, so Delta ISA does not move the changeover.
  if (in.mach) l.tas = std::min(l.tas, TASFromMach(*in.mach, h, in.disa));
  const double tStd = GetStdTemperature(h * kFt) + kKelvinOffset;
  l.ratio = (tStd + in.disa) / tStd;
  return l;
}

// The levels of the integration, from the top down: the band split where TAS(h) has a kink (the
// changeover, the layer bases), each piece cut into equal steps of at most 100 ft. Step ends sit
// at even indices, Simpson midpoints at odd ones.
std::vector<Level> BuildLevels(const DescentInput& in, std::optional<double> changeover) {
  std::vector<double> breaks{in.initialFt, in.finalFt};
  for (int k = 1; k < kAtmosphereLayers; ++k) {
    const double base = kHb[k] / kFt;
    if (base < in.initialFt && base > in.finalFt) breaks.push_back(base);
  }
  if (changeover) breaks.push_back(*changeover);
  std::sort(breaks.begin(), breaks.end(), std::greater<>());
  breaks.erase(std::unique(breaks.begin(), breaks.end()), breaks.end());

  std::vector<Level> levels{LevelAt(in, breaks.front())};
  for (size_t i = 0; i + 1 < breaks.size(); ++i) {
    const double top = breaks[i], bottom = breaks[i + 1];
    const int steps = static_cast<int>(std::ceil((top - bottom) / kMaxStepFt));
    const double half = (top - bottom) / steps / 2;
    for (int j = 1; j < 2 * steps; ++j) levels.push_back(LevelAt(in, top - j * half));
    levels.push_back(LevelAt(in, bottom));
  }
  return levels;
}

// One descent flown through the levels, at a constant rate (ft/min) or a constant flight path
// angle over the ground (given as its tangent).
struct Flight {
  std::string_view error;
  double distanceNm = 0, timeS = 0, trueHeightFt = 0;
  double rodTop = 0, rodBottom = 0;  // ft/min of pressure altitude
  std::vector<DescentPoint> profile;
};

Flight Failed(std::string_view error) {
  Flight f;
  f.error = error;
  return f;
}

Flight Fly(const std::vector<Level>& levels, const DescentInput& in, bool angle, double given, bool keepProfile) {
  const double w = in.windKt;
  // Per level: NM and seconds flown per foot of pressure altitude lost.
  std::vector<double> nmPerFt(levels.size()), sPerFt(levels.size());
  Flight f;
  for (size_t i = 0; i < levels.size(); ++i) {
    const Level& l = levels[i];
    double gs, vz;  // ground speed and true vertical speed, kt
    if (!angle) {
      vz = given * l.ratio * kKtPerFpm;
      if (vz >= l.tas) return Failed(kDescentRateTooHigh);
      gs = std::sqrt(l.tas * l.tas - vz * vz) + w;
    } else {
      // vz = gs tan g and gs = sqrt(TAS^2 - vz^2) + w: the positive root of
      // (1 + t^2) gs^2 - 2 w gs + w^2 - TAS^2 = 0. A tail wind of TAS / t or more would need a
      // vertical speed at the TAS.
      const double t = given;
      if (t * w >= l.tas) return Failed(kDescentRateTooHigh);
      const double k = 1 + t * t;
      gs = (w + std::sqrt(k * l.tas * l.tas - t * t * w * w)) / k;
      vz = gs * t;
    }
    if (gs <= 0) return Failed(kDescentHeadWind);
    // dh/dt = vz / ratio (pressure altitude), so dt/dh = ratio / vz and dx/dh = gs ratio / vz.
    sPerFt[i] = 3600 * l.ratio / (vz * kFtPerNm);
    nmPerFt[i] = gs * sPerFt[i] / 3600;
    const double rod = vz * kFtPerNm / 60 / l.ratio;
    if (i == 0) f.rodTop = rod;
    f.rodBottom = rod;
  }
  const auto simpson = [](double dh, double a, double m, double b) { return dh / 6 * (a + 4 * m + b); };
  if (keepProfile) f.profile.push_back({0, levels.front().h});
  for (size_t i = 0; i + 2 < levels.size(); i += 2) {
    const double dh = levels[i].h - levels[i + 2].h;
    f.distanceNm += simpson(dh, nmPerFt[i], nmPerFt[i + 1], nmPerFt[i + 2]);
    f.timeS += simpson(dh, sPerFt[i], sPerFt[i + 1], sPerFt[i + 2]);
    f.trueHeightFt += simpson(dh, levels[i].ratio, levels[i + 1].ratio, levels[i + 2].ratio);
    if (keepProfile) f.profile.push_back({f.distanceNm, levels[i + 2].h});
  }
  return f;
}

}  // namespace

double DescentGivenDefault(DescentGiven given) {
  switch (given) {
    case DescentGiven::Angle:
      return 3.0;
    case DescentGiven::Distance:
      return 100;
    case DescentGiven::Rate:
      break;
  }
  return 2000;
}

DescentResult ComputeDescent(const DescentInput& in) {
  DescentResult out;
  if (in.finalFt >= in.initialFt) {
    out.error = std::string(kDescentFinalNotBelow);
    return out;
  }
  if (in.mach) {
    const double co = ChangeoverAltitudeFt(in.ias, *in.mach);
    // -1 and -2 are codes (none, above the model's range), not altitudes.
    if (co != kChangeoverNone && co != kChangeoverAbove && co > in.finalFt && co < in.initialFt) out.changeoverFt = co;
  }
  const std::vector<Level> levels = BuildLevels(in, out.changeoverFt);

  Flight f;
  switch (in.given) {
    case DescentGiven::Rate:
      f = Fly(levels, in, false, in.value, true);
      break;
    case DescentGiven::Angle:
      f = Fly(levels, in, true, std::tan(in.value * kDegToRad), true);
      break;
    case DescentGiven::Distance: {
      // The distance falls as the rate grows (less time, and a steeper path takes more of the TAS);
      // a rate past what the TAS or the head wind allows fails, which counts as too fast.
      const Flight fastest = Fly(levels, in, false, kMaxRateFpm, false);
      if (fastest.error.empty() && fastest.distanceNm > in.value) {
        out.error = std::string(kDescentTooShort);
        return out;
      }
      double lo = 0, hi = kMaxRateFpm;
      for (int i = 0; i < 200 && hi - lo > 1e-9 * hi; ++i) {
        const double mid = (lo + hi) / 2;
        const Flight m = Fly(levels, in, false, mid, false);
        (m.error.empty() && m.distanceNm > in.value ? lo : hi) = mid;
      }
      f = Fly(levels, in, false, hi, true);  // its own error when no rate flies the distance
      break;
    }
  }
  if (!f.error.empty()) {
    out.error = std::string(f.error);
    out.changeoverFt.reset();
    return out;
  }

  const double lose = in.initialFt - in.finalFt;
  out.altitudeToLose = Shown(lose, "0");
  out.time = {FormatMinutesSeconds(f.timeS), f.timeS};
  out.distance = Shown(f.distanceNm, "0.0");
  out.rodTop = Shown(f.rodTop, "0");
  out.rodBottom = Shown(f.rodBottom, "0");
  out.angle = Shown(std::atan(f.trueHeightFt / (f.distanceNm * kFtPerNm)) * kRadToDeg, "0.00");
  out.gradient = Shown(lose / f.distanceNm, "0");
  out.meanGs = Shown(f.distanceNm / (f.timeS / 3600), "0");
  out.tasTop = Shown(levels.front().tas, "0");
  out.tasBottom = Shown(levels.back().tas, "0");
  out.changeover = out.changeoverFt ? Shown(*out.changeoverFt, "0") : ShownValue{"None", std::nullopt};
  out.profile = std::move(f.profile);
  return out;
}

}  // namespace norvane
