#pragma once
// The computations of the five atmosphere screens (atmosphere data, speed calculations, changeover
// level, density altitude, stall speed) as pure functions that return the texts the screens show,
// so that a screen and norvane-cli print the same result for the same input. The inputs' quantities
// live here too: the screens take their boxes' rules and tool tips from them and the command line
// checks its options against them.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "app/Quantity.hpp"

namespace norvane {

// One result as shown: its text (through the result's mask, or a special text such as "NA") and
// its numeric value in the shown unit when it is a number.
struct ShownValue {
  std::string text;
  std::optional<double> value;
};

// Temperature offset from ISA (the scroll bars of the atmosphere, speed and descent screens).
inline constexpr Quantity kDisa{.caption = "Temperature offset from standard atmosphere",
                                .min = -90,
                                .max = 40,
                                .unit = "\u00b0C",
                                .whole = true,
                                .cliUnit = "degrees C",
                                .plusSign = true};

// ---- Atmosphere data -------------------------------------------------------------------------

// The altitude by unit (metres or feet) and kind (geometric or geopotential). The geometric limits
// are the model top, 84852 m geopotential, expressed as geometric altitude.
constexpr Quantity AtmosphereAltitude(bool feet, bool geopotential) {
  Quantity q{.caption = "Geometric altitude",
             .min = -500,
             .max = 85999,
             .unit = "m",
             .maxLength = 8,
             .cliUnit = "m, geometric",
             .captionInBrackets = true};
  if (geopotential) {
    q.caption = "Geopotential altitude";
    q.max = 84852;
    q.cliUnit = "m, geopotential";
  }
  if (feet) {
    q.min = -1500;
    q.max = geopotential ? 278385 : 282150;
    q.unit = "ft";
    q.cliUnit = geopotential ? "ft, geopotential" : "ft, geometric";
  }
  return q;
}

// Sea-level pressure typed in hPa or inHg (the scroll bar's end values).
constexpr Quantity Mslp(bool us) {
  if (us) return {.caption = "Mean sea-level pressure", .min = 25.69, .max = 32.01, .unit = "inHg", .rangeDecimals = 2};
  return {.caption = "Mean sea-level pressure", .min = 870, .max = 1084, .unit = "hPa"};
}

// Sea-level pressure scroll bar: metric 1013 + v hPa, US 29.92 + v / 100 inHg, its ends those of
// Mslp(us); v = 0 is exactly 1013.25 hPa in both.
std::pair<int, int> MslpScrollRange(bool us);
double MslpHpaFromScroll(int value, bool us);
// Value label of the scroll bar: "Std" at 0, else "1000" (hPa) or "29.82" (inHg).
std::string MslpScrollText(int value, bool us);

struct AtmosphereDataInput {
  double altitude = 0;  // in metres or feet
  bool feet = false;
  bool geopotential = false;  // false: geometric ("True") altitude
  double disa = 0;            // K; 0 in the standard atmosphere
  double mslpHpa = 1013.25;   // sea-level pressure; 1013.25 in the standard atmosphere
  bool us = false;            // output units
  bool scientific = false;    // "0.0000E+0" for pressure, density and the ratios
};

// Temperature, pressure, density and speed of sound in the output units; the standard ratios.
struct AtmosphereDataResult {
  ShownValue temperature, pressure, density, sound, theta, delta, sigma;
};
AtmosphereDataResult ComputeAtmosphereData(const AtmosphereDataInput& in);

// ---- Speed calculations ----------------------------------------------------------------------

enum class SpeedInput : int { CAS = 0, TAS = 1, Mach = 2 };
inline constexpr Quantity kFlightLevel{.caption = "Flight level", .min = 0, .max = 650, .whole = true};
// The speed the calculation starts from, as chosen.
constexpr Quantity InputSpeed(SpeedInput kind) {
  switch (kind) {
    case SpeedInput::TAS:
      return {.caption = "True air speed", .min = 0, .max = 1500, .unit = "kts", .maxLength = 7, .cliUnit = "kt"};
    case SpeedInput::Mach:
      return {.caption = "Mach number", .min = 0, .max = 3, .rangeDecimals = 2, .maxLength = 7, .minDecimals = 0};
    case SpeedInput::CAS:
      break;
  }
  return {.caption = "Calibrated air speed", .min = 0, .max = 1500, .unit = "kts", .maxLength = 7, .cliUnit = "kt"};
}

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

inline constexpr Quantity kChangeoverIas{
    .caption = "Indicated air speed", .min = 50, .max = 1500, .unit = "kts", .maxLength = 7, .cliUnit = "kt"};
inline constexpr Quantity kChangeoverMach{
    .caption = "Mach number", .min = 0.05, .max = 3.00, .rangeDecimals = 2, .maxLength = 6};
inline constexpr std::string_view kNoChangeoverText = "No calculable changeover level";

struct ChangeoverResult {
  ShownValue altitude;     // ft, "NA" or ">65000"
  ShownValue flightLevel;  // whole number, "NA" or ">650"
  std::string error;       // kNoChangeoverText when there is no solution
};
ChangeoverResult ComputeChangeover(double ias, double mach);

// ---- Density altitude ------------------------------------------------------------------------

constexpr Quantity Qnh(bool us) {
  if (us)
    return {
        .caption = "Altimeter setting", .min = 25.69, .max = 32.01, .unit = "inHg", .rangeDecimals = 2, .maxLength = 7};
  return {.caption = "Altimeter setting", .min = 870, .max = 1084, .unit = "hPa", .maxLength = 7};
}
constexpr Quantity AirTemperature(bool us) {
  if (us)
    return {.caption = "Air temperature",
            .min = -103,
            .max = 131,
            .unit = "\u00b0F",
            .maxLength = 6,
            .cliUnit = "degrees F"};
  return {
      .caption = "Air temperature", .min = -75, .max = 55, .unit = "\u00b0C", .maxLength = 6, .cliUnit = "degrees C"};
}
constexpr Quantity DewPoint(bool us) {
  Quantity q = AirTemperature(us);
  q.caption = "Dew point";
  return q;
}
// Also the field elevation of the weather screen's METAR density altitude.
inline constexpr Quantity kFieldElevation{
    .caption = "Geometric altitude", .min = -1500, .max = 15000, .unit = "ft", .maxLength = 7};
// The same range for the field elevation of a METAR's density altitude, which may stay empty.
inline constexpr Quantity kMetarFieldElevation = [] {
  Quantity q = kFieldElevation;
  q.caption = "Field elevation for the density altitude of a METAR";
  q.optional = true;
  q.maxLength = 6;
  q.after = "; may stay empty";
  return q;
}();

// Saturation vapour pressure over water (hPa) at t (degrees C): Wobus's polynomial fit
// 6.1078 / P(t)^8, used as published also below 0 degrees C.
double SaturationVapourPressure(double t);

struct DensityAltitudeInput {
  double qnh = 1013.25;     // hPa or inHg
  double temperature = 15;  // C or F
  double dewPoint = -75;    // C or F
  double elevationFt = 0;   // geometric
  bool us = false;
};
struct DensityAltitudeResult {
  ShownValue pressure;           // station pressure, hPa ("0.0") or inHg ("0.000")
  ShownValue humidity;           // "45%"
  ShownValue densityAltitude;    // ft
  bool dewPointLowered = false;  // the dew point was above the temperature and was set to it
  double dewPointUsed = 0;       // in the input unit
};
DensityAltitudeResult ComputeDensityAltitude(const DensityAltitudeInput& in);

// ---- Stall speed -----------------------------------------------------------------------------

inline constexpr Quantity kMaxLiftCoefficient{
    .caption = "Maximum lift coefficient", .min = 0.5, .max = 2.5, .rangeDecimals = 1, .maxLength = 5};
inline constexpr Quantity kReferenceStallSpeed{.caption = "Stall speed at sea level and MTOW",
                                               .min = 20,
                                               .max = 300,
                                               .unit = "kts",
                                               .maxLength = 6,
                                               .note = "CAS ; ",
                                               .cliUnit = "kt"};
inline constexpr Quantity kStallAltitude{
    .caption = "Geometric altitude", .min = 0, .max = 65000, .unit = "ft", .maxLength = 7};
inline constexpr Quantity kBankAngle{
    .caption = "Bank angle", .min = 0, .max = 60, .unit = "\u00b0", .whole = true, .cliUnit = "degrees"};
constexpr Quantity WingArea(bool us) {
  if (us) return {.caption = "Wing reference area", .min = 100, .max = 10000, .unit = "sqft", .maxLength = 7};
  return {.caption = "Wing reference area", .min = 10, .max = 1000, .unit = "m2", .maxLength = 7};
}
constexpr Quantity Mtow(bool us) {
  if (us)
    return {.caption = "Maximum takeoff weight",
            .min = 1000,
            .max = 1500000,
            .unit = "lb",
            .maxLength = 9,
            .grouped = true};
  return {
      .caption = "Maximum takeoff weight", .min = 500, .max = 700000, .unit = "kg", .maxLength = 9, .grouped = true};
}
constexpr Quantity CurrentWeight(bool us) {
  Quantity q = Mtow(us);
  q.caption = "Current weight";
  return q;
}

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
