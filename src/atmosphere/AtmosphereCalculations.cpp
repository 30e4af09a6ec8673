#include "atmosphere/AtmosphereCalculations.hpp"

#include <cmath>

#include "app/Angles.hpp"
#include "app/TextFormat.hpp"
#include "app/Units.hpp"
#include "atmosphere/StandardAtmosphere.hpp"

namespace norvane {
namespace {

ShownValue Shown(double v, std::string_view mask) { return {FormatMask(v, mask), v}; }
ShownValue Special(std::string_view text) { return {std::string(text), std::nullopt}; }

// The scroll bar value of a sea-level pressure (hPa or inHg).
int MslpScrollValue(double p, bool us) { return static_cast<int>(std::lround(us ? (p - 29.92) * 100 : p - 1013)); }

}  // namespace

// ---- Atmosphere data -------------------------------------------------------------------------

std::pair<int, int> MslpScrollRange(bool us) {
  return {MslpScrollValue(Mslp(us).min, us), MslpScrollValue(Mslp(us).max, us)};
}

double MslpHpaFromScroll(int value, bool us) {
  if (value == 0) return kP0Hpa;
  return us ? (value * 0.01 + 29.92) * kInHg : 1013.0 + value;
}

std::string MslpScrollText(int value, bool us) {
  if (value == 0) return "Std";
  return us ? FormatMask(value / 100.0 + 29.92, "0.00") : std::to_string(1013 + value);
}

AtmosphereDataResult ComputeAtmosphereData(const AtmosphereDataInput& in) {
  double H = in.feet ? in.altitude * kFt : in.altitude;
  if (!in.geopotential) H = GeometricToGeopotential(H);
  int16_t layer = GetAtmosphereLayer(H);
  double t = GetStdTemperature(H, layer) + in.disa;
  const double theta = (t + kKelvinOffset) / kT0;
  double p = in.mslpHpa * GetPressureRatio(H, layer);
  const double delta = p / kP0Hpa;
  const double sigma = delta / theta;
  double density = sigma * kRho0;
  double sound = SpeedOfSound(t + kKelvinOffset) * kKmhPerMps;
  if (in.us) {
    t = CelsiusToFahrenheit(t);
    p /= kInHg;
    density /= kSlugFt3;
    sound /= kKmPerNm;
  }
  // The scientific format for pressure, density and the ratios; temperature and sound keep theirs.
  const auto scientificOr = [&in](std::string_view mask) { return in.scientific ? "0.0000E+0" : mask; };
  return {Shown(t, "0.0"),
          Shown(p, scientificOr(in.us ? "0.0000" : "0.000")),
          Shown(density, scientificOr(in.us ? "0.0000000" : "0.000000")),
          Shown(sound, "0.0"),
          Shown(theta, scientificOr("0.0000000")),
          Shown(delta, scientificOr("0.0000000")),
          Shown(sigma, scientificOr("0.0000000"))};
}

// ---- Speed calculations ----------------------------------------------------------------------

SpeedCalculationResult ComputeSpeeds(const SpeedCalculationInput& in) {
  // The flight level is a pressure altitude: FL * 100 ft, used as geopotential metres.
  const double H = in.flightLevel * 30.48;
  int16_t layer = GetAtmosphereLayer(H);
  const double T = GetStdTemperature(H, layer) + kKelvinOffset + in.disa;
  const double delta = GetPressureRatio(H, layer);  // ISA pressure: DISA moves only T
  const double a = SpeedOfSound(T) * 3600 / kNm;

  double cas = 0, tas = 0, M = 0;
  switch (in.kind) {
    case SpeedInput::CAS:
      cas = in.speed;
      M = MachFromCAS(cas, delta);
      tas = a * M;
      break;
    case SpeedInput::TAS:
      tas = in.speed;
      M = tas / a;
      cas = CASFromMach(M, delta);
      break;
    case SpeedInput::Mach:
      M = in.speed;
      tas = a * M;
      cas = CASFromMach(M, delta);
      break;
  }
  const double sigma = delta / (T / kT0);
  double tat = (0.2 * M * M + 1) * T - kKelvinOffset;  // recovery factor 1
  const double V = tas * kNm / 3600;
  double q = sigma * kRho0 * V * V / 2;

  SpeedCalculationResult out;
  out.cas = Shown(cas, "0");
  out.tas = Shown(tas, "0");
  out.mach = Shown(M, "0.000");
  // Equivalent airspeed, incompressible: TAS sqrt(sigma), written with the sea-level sound speed.
  out.eas = M < 1 ? Shown(M * kA0Kt * std::sqrt(sigma), "0") : Special("NA");
  if (in.us) {
    tat = CelsiusToFahrenheit(tat);
    q = q / kSlugFt3 / kFt / kFt;
  }
  out.tat = Shown(tat, "0.0");
  out.q = Shown(q, in.us ? "0.0" : "0");
  return out;
}

// ---- Changeover level ------------------------------------------------------------------------

ChangeoverResult ComputeChangeover(double ias, double mach) {
  const double A = ChangeoverAltitudeFt(ias, mach);
  ChangeoverResult out;
  if (A == kChangeoverNone) {
    out.altitude = Special("NA");
    out.flightLevel = Special("NA");
    out.error = std::string(kNoChangeoverText);
  } else if (A == kChangeoverAbove) {
    out.altitude = Special(">65000");
    out.flightLevel = Special(">650");
  } else {
    out.altitude = Shown(A, "0");
    out.flightLevel = Shown(A / 100, "0");  // to the nearest whole flight level
  }
  return out;
}

// ---- Density altitude ------------------------------------------------------------------------

double SaturationVapourPressure(double t) {
  // Herman Wobus's fit of saturation vapour pressure over water; valid from -50 to 100 C.
  static constexpr double c[] = {0.99999683,     -0.0090826951, 7.8736169e-05,  -6.1117958e-07, 4.3884187e-09,
                                 -2.9883885e-11, 2.1874425e-13, -1.7892321e-15, 1.1112018e-17,  -3.0994571e-20};
  double P = c[9];
  for (int k = 8; k >= 0; --k) P = c[k] + t * P;
  return 6.1078 / std::pow(P, 8);
}

DensityAltitudeResult ComputeDensityAltitude(const DensityAltitudeInput& in) {
  DensityAltitudeResult out;
  const double H = GeometricToGeopotential(in.elevationFt * kFt);
  const double qnh = in.us ? in.qnh * kInHg : in.qnh;
  out.dewPointLowered = in.dewPoint > in.temperature;
  out.dewPointUsed = out.dewPointLowered ? in.temperature : in.dewPoint;
  const double t = in.us ? FahrenheitToCelsius(in.temperature) : in.temperature;
  const double td = in.us ? FahrenheitToCelsius(out.dewPointUsed) : out.dewPointUsed;

  // ISA reduction from sea level to the elevation, anchored on QNH:
  // p = (QNH^(1/n) - (p0^(1/n) |L0| / T0) H)^n.
  const double p = std::pow(std::pow(qnh, 1 / kPressureExponent) - 8.41728638137735e-05 * H, kPressureExponent);
  const double es = SaturationVapourPressure(t);
  const double e = SaturationVapourPressure(td);
  const double rh = 100 * e / es;
  // Moist air as a mix of ideal gases: dry part with R = 287.053, vapour with Rv = 461.495 J/(kg K).
  const double Tk = t + kKelvinOffset;
  const double rho = (p - e) * 100 / (287.053072047065 * Tk) + e * 100 / (461.495 * Tk);
  const double sigma = rho / kRho0;
  const double da = GeopotentialToGeometric(DensityAltitudeM(sigma)) / kFt;

  out.pressure = in.us ? Shown(p / kInHg, "0.000") : Shown(p, "0.0");
  out.humidity = {FormatMask(rh, "0") + "%", rh};
  out.densityAltitude = Shown(da, "0");
  return out;
}

// ---- Stall speed -----------------------------------------------------------------------------

StallSpeedResult ComputeStallSpeed(const StallSpeedInput& in) {
  const double massFactor = in.us ? kKgPerLb : 1.0;
  const double mtow = in.mtow * massFactor;
  const double weight = in.weight * massFactor;
  // K = CL max * S (m2); from a reference stall speed, the same product from lift = weight at
  // sea level: W g = rho0 Vs^2 K / 2.
  double K;
  if (in.fromVs) {
    const double vref = in.vs * kNm / 3600;
    K = 2 * mtow * kG0 / kRho0 / vref / vref;
  } else {
    K = in.clMax * in.wingArea * (in.us ? kFt * kFt : 1.0);
  }
  const double H = GeometricToGeopotential(in.altitudeFt * kFt);
  int16_t layer = GetAtmosphereLayer(H);
  const double T = GetStdTemperature(H, layer) + kKelvinOffset;
  const double theta = T / kT0;
  const double delta = GetPressureRatio(H, layer);
  const double rho = delta / theta * kRho0;
  const double phi = in.bankDeg * kDegToRad;
  // Lift in a level turn is W / cos(phi): the stall speed grows with 1 / sqrt(cos(phi)).
  const double V = std::sqrt(2 * weight * kG0 / rho / K / std::cos(phi));
  const double M = V / SpeedOfSound(T);

  StallSpeedResult out;
  out.ktas = Shown(V * 3600 / kNm, "0.0");
  if (M >= 1) {
    out.kcas = Special("NA");
  } else {
    // Subsonic inversion only: CAS from the impact pressure referred to sea level.
    const double cas = kA0Kt * std::sqrt(5 * (std::pow(ImpactPressureRatio(M) * delta + 1, kTwoSevenths) - 1));
    out.kcas = Shown(cas, "0.0");
  }
  return out;
}

}  // namespace norvane
