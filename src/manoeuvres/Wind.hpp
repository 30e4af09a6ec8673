#pragma once
// Wind triangle and runway wind components. Speeds in knots, angles in degrees at every
// interface; wind directions are where the wind blows FROM (meteorological convention).
// Sign conventions shared by every result: head wind negative, tail wind positive; wind
// correction angle and crosswind positive to the right.

#include <string>

#include "manoeuvres/ManoeuvreInputs.hpp"

namespace norvane {

// The inputs of the wind calculations: whole knots and whole degrees.
inline constexpr Quantity kWindTas = WholeKnots("True air speed", 50, 1500);
inline constexpr Quantity kWindGroundSpeed = WholeKnots("Ground speed", 50, 1500);
inline constexpr Quantity kWindSpeed = WholeKnots("Wind speed", 0, 150);
inline constexpr Quantity kWindTrack = WholeDegrees("Route track");
inline constexpr Quantity kWindDirection = WholeDegrees("Wind direction");
inline constexpr Quantity kWindHeading = WholeDegrees("Current heading");
inline constexpr Quantity kRunwayHeading = WholeDegrees("Runway heading");

inline constexpr const char* kTooStrongWindText = "Too strong wind for course";
inline constexpr const char* kInconsistentWindText = "Inconsistent results, check input";

struct WindTriangle {
  double wca = 0;          // wind correction angle, degrees, right positive
  double groundSpeed = 0;  // kt; also set when failed once the cross component is solvable
  bool failed = true;      // wind stronger than TAS, cross component too large, or GS <= 0
};

// Heading correction and ground speed to hold `track` at `tas` in a wind of `windSpeed` from
// `windDirection`. Resolving the air vector across and along the track:
//   sin(WCA) = W sin(WD - TRK) / TAS,  GS = TAS cos(WCA) - W cos(WD - TRK).
// W equal to TAS is accepted (WCA reaches +-90 degrees, and GS then decides).
WindTriangle SolveWindTriangle(double tas, double track, double windSpeed, double windDirection);

struct UnknownWind {
  double drift = 0;          // HDG - TRK brought into [-180, 180], degrees
  double headTail = 0;       // GS - TAS, kt
  double windSpeed = 0;      // kt
  double windDirection = 0;  // [0, 360), degrees, where the wind blows from
  bool inconsistent = true;  // |drift| >= 90 or wind above 150 kt
};

// The wind found from the flown heading and TAS and the measured track and ground speed: the
// wind (from) vector is the air vector minus the ground vector.
UnknownWind ComputeUnknownWind(double tas, double groundSpeed, double track, double heading);

struct RunwayWind {
  double crosswind = 0;  // kt, wind from the right positive
  double headTail = 0;   // kt, head wind negative
};

// Components of a wind of `windSpeed` from `windDirection` on a runway of heading `runway`.
RunwayWind ComputeRunwayWind(double runway, double windSpeed, double windDirection);

// What the wind screen and norvane-cli show: four result texts (dataR 1 to 4) or one message.
// Mode 0 (known wind): ground speed "0", heading "000", WCA and head/tail signed integers.
// Mode 1 (unknown wind): wind speed "0", wind direction "000", WCA and head/tail signed.
// Mode 2 (runway): crosswind and head/tail signed integers; texts 3 and 4 stay empty.
// Inputs equal to exactly 360 degrees are taken as 0.
struct WindTexts {
  std::string message;   // the error text; empty when results are shown
  std::string text[4];   // dataR 1..4
  double value[4] = {};  // the unrounded values behind text[]
  int count = 0;         // how many of text[] are written (0 when message is set)
};

WindTexts KnownWindTexts(double tas, double track, double windSpeed, double windDirection);
WindTexts UnknownWindTexts(double tas, double groundSpeed, double track, double heading);
WindTexts RunwayWindTexts(double runway, double windSpeed, double windDirection);

}  // namespace norvane
