#pragma once
// ICAO Standard Atmosphere (ICAO Doc 7488, identical to the US Standard Atmosphere 1976 below
// 86 km) from sea level to 84852 m geopotential altitude, geometric/geopotential conversion, and
// the compressible airspeed relations: subsonic isentropic pitot formula (St Venant) and the
// Rayleigh supersonic pitot formula.
//
// Units: geopotential metres, kelvin inside formulas and degrees Celsius at the interfaces,
// pressure as the ratio delta = p / 1013.25 hPa, speeds in knots. Altitudes given in feet are
// turned into metres with 0.3048 and used as geopotential metres (pressure-altitude style).
//
// The procedures do not validate their arguments: callers keep them inside the ranges that their
// input boxes enforce. Two guards keep every call safe all the same: an altitude at or above the
// model top never reads outside the layer tables, and the supersonic iteration always ends.

#include <array>
#include <cstdint>

#include "app/Units.hpp"

namespace norvane {

// Layer tables, indexed by layer number. kHb has one more entry than the others: kHb[7] is the
// top of the model and only bounds layer 6. The base pressure ratios are the published values,
// not recomputed from the layers below.
inline constexpr int kAtmosphereLayers = 7;
inline constexpr std::array<double, 8> kHb = {0, 11000, 20000, 32000, 47000, 51000, 71000, 84852};
inline constexpr std::array<double, 7> kTb = {288.15, 216.65, 216.65, 228.65, 270.65, 270.65, 214.65};
inline constexpr std::array<double, 7> kLb = {-0.0065, 0, 0.001, 0.0028, 0, -0.0028, -0.002};
inline constexpr std::array<double, 7> kPb = {1.0,
                                              0.223361105092158,
                                              0.0540329501078488,
                                              0.00856667835929168,
                                              0.00109456013377711,
                                              0.000660635313285837,
                                              3.90468337334393e-05};

// Physical constants, used exactly as written.
inline constexpr double kP0Hpa = 1013.25;  // sea-level standard pressure, hPa
inline constexpr double kT0 = 288.15;      // sea-level standard temperature, K
inline constexpr double kKelvinOffset = 273.15;
inline constexpr double kRho0 = 1.22499915588771;                // sea-level standard density, kg/m3
inline constexpr double kGMR = 0.0341631947363104;               // g0 M / R*, K per m
inline constexpr double kK11 = 0.0001576884132763;               // kGMR / 216.65, per m
inline constexpr double kDensityExponent = 4.25587611327852;     // n - 1
inline constexpr double kPressureExponent = 5.25587611327852;    // n = g0 M / (R* |L0|)
inline constexpr double kGammaR = 401.874300865891;              // gamma R for air, m2/(s2 K)
inline constexpr double kA0Kt = 661.478827231624;                // sea-level speed of sound, knots
inline constexpr double kRayleigh = 166.921580093168;            // 7.2^3.5 / 6: Rayleigh pitot, gamma 1.4
inline constexpr double kRayleighIteration = 0.881284854347331;  // sqrt(7^2.5 / kRayleigh)
inline constexpr double kEarthRadiusGeopotential = 6356766;      // m
inline constexpr double kSlugFt3 = 515.378818393196;             // kg/m3 per slug/ft3
inline constexpr double kTwoSevenths = 0.285714285714286;        // the exponent 2/7 as the model writes it

// Layer argument value meaning "not known yet: find it and write it back".
inline constexpr int16_t kLayerUnknown = -1;

// Layer 0..6 containing geopotential altitude H (m); 7 at or above the model top (84852 m).
// H below sea level belongs to layer 0; H exactly on a base belongs to the layer above.
int16_t GetAtmosphereLayer(double H);

// ISA temperature at H (geopotential m), degrees Celsius. layer in/out: -1 (or any value outside
// 0..7) is resolved with GetAtmosphereLayer and written back; 0..7 is used as given.
// Layer 7 (at or above the model top) gives the values of the top, 84852 m: the table has no
// coefficients above it, and the top layer's formula is evaluated at the top (-86.204 degrees C).
double GetStdTemperature(double H, int16_t& layer);
double GetStdTemperature(double H);  // layer resolved internally

// ISA pressure ratio delta = p / p0 at H (geopotential m). Same layer convention and the same
// top-of-model behaviour as GetStdTemperature.
double GetPressureRatio(double H, int16_t& layer);
double GetPressureRatio(double H);

// Geopotential altitude of geometric altitude z (m) and back, with the US 1976 radius 6356766 m.
// Each is the exact algebraic inverse of the other.
double GeometricToGeopotential(double z);
double GeopotentialToGeometric(double H);

// Impact pressure over static pressure qc/p at Mach M: isentropic below Mach 1, Rayleigh pitot
// formula (normal shock in front of the probe) from Mach 1 up. ImpactPressureRatio(0) is 0.
double ImpactPressureRatio(double M);

// Mach number at pressure ratio delta for calibrated airspeed CAS (kt). Above Mach 1 the
// Rayleigh formula is inverted by fixed-point iteration to |dM| < 1e-8 (it contracts by a factor
// of about 0.4 per round); the iteration is capped at kMachIterationLimit rounds and stops on a
// non-finite value, so it ends for any input.
double MachFromCAS(double CAS, double delta);
inline constexpr int kMachIterationLimit = 200;

// Calibrated airspeed (kt) of Mach M at pressure ratio delta: the inverse of MachFromCAS, with the
// coarser tolerance 1e-6 on CAS / a0 in the supersonic iteration (same cap).
double CASFromMach(double M, double delta);

// True airspeed (kt) for CAS (kt) or Mach M at altitude Alt (ft, used as geopotential), with the
// temperature offset DISA (K) from ISA. The pressure stays ISA; DISA changes the speed of sound.
double TASFromCAS(double CAS, double Alt, double DISA);
double TASFromMach(double M, double Alt, double DISA);

// Speed of sound (m/s) at static temperature T (K).
double SpeedOfSound(double T);

// 1 - e^x, by a six-term series for |x| <= 0.01 so that tiny x keep their precision.
double OneMinusExp(double x);

// Pressure altitude (ft) of pressure ratio delta: troposphere, and above 11000 m the isothermal
// formula of layer 1 (continued unchanged above 20000 m; keep delta >= kPb[2] for a standard
// answer). PressureAltitudeFt(1) is 0.
double PressureAltitudeFt(double delta);

// Density altitude (geopotential m) of density ratio sigma: troposphere, isothermal above
// 11000 m (sigma 0.297075940144498). DensityAltitudeM(1) is 0.
double DensityAltitudeM(double sigma);
inline constexpr double kSigma11 = 0.297075940144498;  // ISA density ratio at 11000 m

// Pressure altitude (ft) at which calibrated airspeed CAS (kt) and Mach M describe the same flight
// condition (the crossover altitude of a climb schedule). Codes:
//   kChangeoverNone (-1): no solution (CAS or M zero, or the Mach number is reached below sea
//   level); kChangeoverAbove (-2): above 20000 m, where the pressure altitude inversion stops.
// A non-finite intermediate (not reachable from the screens' ranges) gives 0.
double ChangeoverAltitudeFt(double CAS, double M);
inline constexpr double kChangeoverNone = -1;
inline constexpr double kChangeoverAbove = -2;

double FahrenheitToCelsius(double t);
double CelsiusToFahrenheit(double t);

}  // namespace norvane
