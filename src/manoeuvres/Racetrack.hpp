#pragma once
// A holding pattern (racetrack) flown in wind. From the fix on the inbound heading the aircraft
// turns through the outbound heading, flies it for the outbound time, turns the same way back to
// the inbound heading and must roll out on the inbound course one inbound leg before the fix.
//
// Model: constant TAS; rate turns (ComputeRateTurn), circular in the moving air; straight legs at
// constant heading; the air mass moves with the wind, so a ground position is the air position
// plus the wind vector times the elapsed time.
//
// The two conditions on the roll-out point (no cross-track offset, one inbound leg before the
// fix) have a direct solution, so no iteration is needed: the two turns add up to exactly 360
// degrees, and the air displacement of a circular arc depends only on its end headings, so the
// turns cancel in the air and only take time, 360 / rate. Ground displacement from the fix to
// the roll-out point is then  T_out (TAS u(H_out) + wind) + wind 360 / rate,  which must equal
// -L u(course). The outbound ground vector therefore points along
//   R = -L u(course) - wind 360 / rate,
// a wind triangle for the track of R gives H_out and the outbound ground speed, and
// T_out = |R| / GS_out. For a crosswind this is the pilots' triple-drift rule: the turns drift
// twice the inbound leg's drift, and the outbound leg has to make it good on top of its own.

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "manoeuvres/Wind.hpp"

namespace norvane {

// The inputs of the racetrack calculator; the wind speed is kWindSpeed.
inline constexpr Quantity kRacetrackCourse = WholeDegrees("Inbound course to the fix");
inline constexpr Quantity kRacetrackTas = kWindTas.withRange(50, 600);
inline constexpr Quantity kRacetrackWindDirection = WholeDegrees("Direction the wind blows from");
inline constexpr Quantity kRacetrackLeg = DecimalInput("Time on the inbound leg", 0.5, 5, "min", 1);

inline constexpr std::string_view kNoRacetrackText = "No racetrack in this wind";

struct RacetrackInput {
  double course = 0;                   // inbound course, degrees (360 taken as 0)
  double tas = 180;                    // kt
  double windDirection = 0;            // where the wind blows from, degrees
  double windSpeed = 0;                // kt
  double legMinutes = 1;               // inbound leg, minutes
  bool right = true;                   // turn direction
  std::optional<double> maxBank = 25;  // degrees; nullopt: no limit
  double rate = 3;                     // deg/s
};

// The results in their order on the screen and in norvane-cli.
enum RacetrackResultIndex {
  kRtInboundHeading,
  kRtInboundGs,
  kRtOutboundHeading,
  kRtOutboundCorrection,
  kRtOutboundTime,
  kRtOutboundGs,
  kRtBank,
  kRtRate,
  kRtRadius,
  kRtPatternTime,
  kRtLength,
  kRtWidth,
  kRacetrackResults
};

// A ground position in NM from the fix: along the inbound course (the flying direction positive)
// and across it (right positive).
struct RacetrackPoint {
  double along = 0, across = 0;
};

struct RacetrackResult {
  std::string error;  // kTooStrongWindText or kNoRacetrackText; no results then
  // Texts as shown: headings "000", ground speeds "0", correction signed integer, times "m:ss"
  // (values in seconds), bank "0.0", rate "0.00", radius "0.00", length and width "0.0".
  std::array<std::string, kRacetrackResults> text;
  std::array<double, kRacetrackResults> value{};  // unrounded
  std::vector<RacetrackPoint> track;              // ground track of one circuit, from the fix back to it
  RacetrackPoint rollOut;                         // where the second turn ends
};

RacetrackResult ComputeRacetrack(const RacetrackInput& in);

}  // namespace norvane
