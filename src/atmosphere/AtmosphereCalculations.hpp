#pragma once
// The computations of the five atmosphere screens (atmosphere data, speed calculations, changeover
// level, density altitude, stall speed) as pure functions that return the texts the screens show,
// so that a screen and norvane-cli print the same result for the same input. Input ranges live here
// too: the screens validate their boxes against them and the command line checks its options.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace norvane {

// One result as shown: its text (through the result's mask, or a special text such as "NA") and
// its numeric value in the shown unit when it is a number.
struct ShownValue {
  std::string text;
  std::optional<double> value;
};

// Inclusive admissible range of an input.
struct InputRange {
  double min = 0, max = 0;
  bool Contains(double v) const { return v >= min && v <= max; }
};

// Temperature offset from ISA, degrees (the scroll bars of the atmosphere and speed screens).
inline constexpr InputRange kDisaRange{-90, 40};

// ---- Atmosphere data -------------------------------------------------------------------------

// Altitude box range by unit (metres or feet) and kind (geometric or geopotential). The geometric
// limits are the model top, 84852 m geopotential, expressed as geometric altitude.
InputRange AtmosphereAltitudeRange(bool feet, bool geopotential);
// Tool tip of the altitude box: "(Geometric altitude -500 to 85999 m)".
std::string AtmosphereAltitudeToolTip(bool feet, bool geopotential);

// Sea-level pressure scroll bar: metric 1013 + v hPa (v -143..71), US 29.92 + v / 100 inHg
// (v -423..209); v = 0 is exactly 1013.25 hPa in both.
InputRange MslpScrollRange(bool us);
double MslpHpaFromScroll(int value, bool us);
// Value label of the scroll bar: "Std" at 0, else "1000" (hPa) or "29.82" (inHg).
std::string MslpScrollText(int value, bool us);
// Sea-level pressure range typed in hPa or inHg (the scroll bar's end values).
InputRange MslpRange(bool us);

struct AtmosphereDataInput {
  double altitude = 0;        // in metres or feet
  bool feet = false;
  bool geopotential = false;  // false: geometric ("True") altitude
  double disa = 0;            // K; 0 in the standard atmosphere
  double mslpHpa = 1013.25;   // sea-level pressure; 1013.25 in the standard atmosphere
  bool us = false;            // output units
  bool scientific = false;    // "0.0000E+0" for pressure, density and the ratios
};

// Results in this order: temperature, pressure, density, speed of sound, theta, delta, sigma.
inline constexpr int kAtmosphereResults = 7;
struct AtmosphereDataResult {
  std::array<ShownValue, kAtmosphereResults> results;
};
std::array<std::string_view, kAtmosphereResults> AtmosphereDataMasks(bool us, bool scientific);
AtmosphereDataResult ComputeAtmosphereData(const AtmosphereDataInput& in);

// ---- Speed calculations ----------------------------------------------------------------------

enum class SpeedInput : int { CAS = 0, TAS = 1, Mach = 2 };
inline constexpr InputRange kFlightLevelRange{0, 650};
InputRange SpeedInputRange(SpeedInput kind);  // 0..1500 kt, Mach 0..3

struct SpeedCalculationInput {
  double flightLevel = 0;
  SpeedInput kind = SpeedInput::CAS;
  double speed = 0;  // kt, or the Mach number
  double disa = 0;   // K
  bool us = false;   // TAT in degrees F and q in lb/ft2
};
struct SpeedCalculationResult {
  ShownValue cas, tas, mach, eas, tat, q;  // eas is "NA" at Mach >= 1
};
SpeedCalculationResult ComputeSpeeds(const SpeedCalculationInput& in);

// ---- Changeover level ------------------------------------------------------------------------

inline constexpr InputRange kChangeoverIasRange{50, 1500};
inline constexpr InputRange kChangeoverMachRange{0.05, 3.00};
inline constexpr std::string_view kNoChangeoverText = "No calculable changeover level";

struct ChangeoverResult {
  ShownValue altitude;     // ft, "NA" or ">65000"
  ShownValue flightLevel;  // whole number, "NA" or ">650"
  std::string error;       // kNoChangeoverText when there is no solution
};
ChangeoverResult ComputeChangeover(double ias, double mach);

// ---- Density altitude ------------------------------------------------------------------------

InputRange QnhRange(bool us);                 // 870..1084 hPa, 25.69..32.01 inHg
InputRange AirTemperatureRange(bool us);      // -75..55 C, -103..131 F (also the dew point's)
inline constexpr InputRange kElevationRange{-1500, 15000};  // ft, geometric

// Saturation vapour pressure over water (hPa) at t (degrees C): Wobus's polynomial fit
// 6.1078 / P(t)^8, used as published also below 0 degrees C.
double SaturationVapourPressure(double t);

struct DensityAltitudeInput {
  double qnh = 1013.25;      // hPa or inHg
  double temperature = 15;   // C or F
  double dewPoint = -75;     // C or F
  double elevationFt = 0;    // geometric
  bool us = false;
};
struct DensityAltitudeResult {
  ShownValue pressure;         // station pressure, hPa ("0.0") or inHg ("0.000")
  ShownValue humidity;         // "45%"
  ShownValue densityAltitude;  // ft
  bool dewPointLowered = false;  // the dew point was above the temperature and was set to it
  double dewPointUsed = 0;       // in the input unit
};
DensityAltitudeResult ComputeDensityAltitude(const DensityAltitudeInput& in);

// ---- Stall speed -----------------------------------------------------------------------------

inline constexpr InputRange kClMaxRange{0.5, 2.5};
inline constexpr InputRange kReferenceVsRange{20, 300};       // kt CAS
inline constexpr InputRange kStallAltitudeRange{0, 65000};    // ft, geometric
inline constexpr InputRange kBankRange{0, 60};                // degrees
InputRange WingAreaRange(bool us);  // 10..1000 m2, 100..10000 sqft
InputRange WeightRange(bool us);    // 500..700000 kg, 1000..1500000 lb (MTOW and weight)

struct StallSpeedInput {
  bool fromVs = false;  // true: reference stall speed and MTOW; false: CL max and wing area
  double clMax = 0;
  double wingArea = 0;  // m2 or sqft
  double vs = 0;        // kt CAS at sea level, MTOW
  double mtow = 0;      // kg or lb
  double weight = 0;    // kg or lb
  double altitudeFt = 0;
  double bankDeg = 0;
  bool us = false;
};
struct StallSpeedResult {
  ShownValue ktas;  // "0.0"
  ShownValue kcas;  // "0.0", "NA" when the true stall speed is supersonic
};
StallSpeedResult ComputeStallSpeed(const StallSpeedInput& in);

}  // namespace norvane
