#pragma once
// Rate turns in a coordinated, level turn: tan(bank) = omega V / g, radius = V / omega
// = V^2 / (g tan(bank)), load factor n = 1 / cos(bank). And the turn anticipation for
// intercepting a radial.

#include <cstdint>
#include <optional>
#include <string>

#include "manoeuvres/ManoeuvreInputs.hpp"

namespace norvane {

inline constexpr Quantity kTurnTas = WholeKnots("True air speed", 50, 1500);
// The anticipation's inputs: both or neither.
inline constexpr Quantity kInterceptAngle = OptionalInput(WholeDegrees("Interception angle", 10, 90));
inline constexpr Quantity kInterceptDistance =
    OptionalInput(DecimalInput("Distance to station at beginning of turn", 5, 50, "NM", 0));

// The choices the screens offer, in their order: a maximum bank of 20, 25 or 30 degrees or none,
// and half the standard rate or the standard rate (deg/s).
inline constexpr std::optional<double> kMaxBankChoices[] = {20.0, 25.0, 30.0, std::nullopt};
inline constexpr double kTurnRateChoices[] = {1.5, 3.0};

struct RateTurn {
  double rate = 0;    // degrees per second
  double bank = 0;    // degrees
  double radius = 0;  // metres
};

// The turn at `rate` deg/s and `tas` knots. When the rate needs more bank than `maxBank` degrees
// (nullopt: no limit), the turn is flown at the maximum bank and the rate drops to g tan(bank) / V.
RateTurn ComputeRateTurn(double tas, std::optional<double> maxBank, double rate);

struct TurnAnticipation {
  bool possible = false;     // false when the turn cannot be completed inside the distance
  double x = 0;              // sine of the anticipation angle
  double angle = 0;          // degrees of radial to lead the turn by
  double finalDistance = 0;  // NM from the station at the end of the turn; <= 0 means past it
};

// Turn anticipation for intercepting a radial at `interceptAngle` degrees, the turn starting
// `distance` NM from the station, with a turn radius of `radiusNm`. In the triangle station -
// turn start - intercept point the lead R tan(theta/2) faces the anticipation angle a and the
// distance D faces 180 - theta, so sin a = R tan(theta/2) sin(theta) / D; the turn ends
// R tan(theta/2) short of the intercept point.
TurnAnticipation ComputeTurnAnticipation(double interceptAngle, double distance, double radiusNm);

enum class RadiusUnit : int16_t { NauticalMiles = 0, Metres = 1, Feet = 2 };

// "Radius (NM)", "Radius (m)", "Radius (ft)".
std::string RadiusCaption(RadiusUnit unit);

// What the turn screen and norvane-cli show.
struct TurnTexts {
  std::string bank, rate, radius, gLoad;    // "0.0", "0.00", NM 3 / m and ft 1 decimal, "0.00"
  std::string anticipation, finalDistance;  // "0.0", "NA", "past"; empty without intercept data
  double bankValue = 0, rateValue = 0, radiusValue = 0, gLoadValue = 0;
  std::optional<double> anticipationValue, finalDistanceValue;  // set when a number is shown
};

// Anticipation is computed only when both interceptAngle and distance are given.
TurnTexts CalculateTurnTexts(double tas, std::optional<double> maxBank, double rate, RadiusUnit unit,
                             std::optional<double> interceptAngle, std::optional<double> distance);

}  // namespace norvane
