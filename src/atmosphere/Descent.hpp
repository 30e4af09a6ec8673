#pragma once
// Descent planning at the speed schedule actually flown: a Mach number above the changeover
// altitude, the indicated airspeed (taken as CAS) below it, in the ISA shifted by a temperature
// offset, with a constant wind component along the track.
//
// Altitudes are pressure altitudes (the altimeter on 1013.25 hPa). A rate of descent is what the
// vertical-speed indicator shows, a rate of pressure altitude; in air warmer than standard the
// pressure levels lie further apart, so the true vertical speed is that rate times T / T_std
// (hydrostatic equation: dz/dh = T / T_std at the same pressure). Ground speed is the horizontal
// part of the TAS plus the wind: GS = sqrt(TAS^2 - Vz^2) + wind.
//
// The integrals over the altitude band are evaluated by Simpson's rule on steps of at most
// 100 ft, split at the changeover altitude and at the layer bases of the model (the tropopause,
// 36089 ft), where TAS(h) has a kink; the result agrees with a 1-ft step integration to well
// below 0.01 NM and 1 s.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "atmosphere/AtmosphereCalculations.hpp"

namespace norvane {

// What the given box holds: the rate of descent (ft/min), the flight path angle over the ground (degrees)
// or the distance from top to bottom (NM).
enum class DescentGiven : int { Rate = 0, Angle = 1, Distance = 2 };

inline constexpr Quantity kDescentInitial{
    .caption = "Initial pressure altitude", .min = 0, .max = 65000, .unit = "ft", .whole = true, .maxLength = 5};
inline constexpr Quantity kDescentFinal{
    .caption = "Final pressure altitude", .min = -1500, .max = 65000, .unit = "ft", .whole = true, .maxLength = 6};
inline constexpr Quantity kDescentIas{.caption = "Indicated air speed below the changeover",
                                      .min = 50,
                                      .max = 450,
                                      .unit = "kts",
                                      .maxLength = 6,
                                      .cliUnit = "kt"};
inline constexpr Quantity kDescentMach{.caption = "Mach number above the changeover",
                                       .min = 0.30,
                                       .max = 0.95,
                                       .rangeDecimals = 2,
                                       .maxLength = 5,
                                       .optional = true,
                                       .remark = "; empty: the IAS all the way"};
inline constexpr Quantity kDescentWind{.caption = "Wind component",
                                       .min = -150,
                                       .max = 150,
                                       .unit = "kts",
                                       .maxLength = 6,
                                       .cliUnit = "kt",
                                       .remark = ", tail wind positive"};
constexpr Quantity DescentGivenValue(DescentGiven given) {
  switch (given) {
    case DescentGiven::Angle:
      return {.caption = "Flight path angle over the ground",
              .min = 0.5,
              .max = 10.0,
              .unit = "\u00b0",
              .rangeDecimals = 1,
              .maxLength = 6,
              .cliUnit = "degrees"};
    case DescentGiven::Distance:
      return {.caption = "Distance from the top to the bottom of the descent",
              .min = 1,
              .max = 500,
              .unit = "NM",
              .maxLength = 6};
    case DescentGiven::Rate:
      break;
  }
  return {.caption = "Rate of descent", .min = 100, .max = 10000, .unit = "ft/min", .maxLength = 6};
}
double DescentGivenDefault(DescentGiven given);  // 2000 ft/min, 3 deg, 100 NM

inline constexpr std::string_view kDescentFinalNotBelow = "Final altitude must be below initial altitude";
inline constexpr std::string_view kDescentRateTooHigh = "Rate of descent too high for this speed";
inline constexpr std::string_view kDescentHeadWind = "Too strong head wind";
inline constexpr std::string_view kDescentTooShort = "Distance too short for this descent";

struct DescentInput {
  double initialFt = 35000;
  double finalFt = 3000;
  double ias = 250;            // kt, taken as CAS
  std::optional<double> mach;  // none: the IAS all the way
  double windKt = 0;           // tail wind positive
  double disa = 0;             // K
  DescentGiven given = DescentGiven::Rate;
  double value = 2000;  // in the unit of `given`
};

// One point of the side view: distance from the top of descent and pressure altitude.
struct DescentPoint {
  double distanceNm = 0;
  double altitudeFt = 0;
};

struct DescentResult {
  // Texts as shown; `time` is "m:ss" with its value in seconds. Empty when `error` is set.
  ShownValue altitudeToLose, time, distance, rodTop, rodBottom, angle, gradient, meanGs, tasTop, tasBottom, changeover;
  std::string error;                   // one of the four texts above, no results
  std::vector<DescentPoint> profile;   // top first, one point per integration step
  std::optional<double> changeoverFt;  // when it lies between final and initial altitude
};

DescentResult ComputeDescent(const DescentInput& in);

}  // namespace norvane
